// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoReplacing.h"
#include "String+VeltoSearching.h"
#include "VeltoException.h"
#include "VeltoStringReplacer.h"
#include "veltotest.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

#include <sys/resource.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

enum class Op { String, Set, CoalescedSet, LineEndings };

VeltoStringReplacer::MatchBlock replacing(const QString &target, const QString &replacement)
{
    return [=](const QString &string, VeltoRange range, qint64, QString *slot) {
        *slot = replacement;
        return velto::rangeOfStringVelto(string, target, {}, range);
    };
}

} // namespace

Q_DECLARE_METATYPE(Op)

class StringReplacerTest : public QObject
{
    Q_OBJECT

private slots:
    void replacesInPlaceAndBuffered_data();
    void replacesInPlaceAndBuffered();
    void nothingToReplaceLeavesTheInput();
    void longStringsAreRebuiltLeavingTheCallersString_data();
    void longStringsAreRebuiltLeavingTheCallersString();
    void chainedPassesWorkOnTheResult();
    void blockSeesLengthChangeInBothModes();
    void randomisedAgainstModel();
    void badRangesAndBlocksThrow();
    void mutableStringOperations();
    void memoryExhaustionFallsBackToTheOriginal();
};

void StringReplacerTest::replacesInPlaceAndBuffered_data()
{
    QTest::addColumn<Op>("op");
    QTest::addColumn<QString>("input");
    QTest::addColumn<QString>("what");
    QTest::addColumn<QString>("replacement");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<quint64>("count");

    const QString pair = u"\U0001F600"_s;
    QTest::newRow("resumes after inserted text") << Op::String << u"aaa"_s << u"a"_s << u"aa"_s << u"aaaaaa"_s << 3ull;
    QTest::newRow("set, each member") << Op::Set << u"a   b"_s << u" "_s << u"_"_s << u"a___b"_s << 3ull;
    QTest::newRow("set, coalesced") << Op::CoalescedSet << u"a \t b\t"_s << u" \t"_s << u"_"_s << u"a_b_"_s << 2ull;
    QTest::newRow("surrogate pair, one match") << Op::Set << u"x"_s + pair + pair << pair << u"-"_s << u"x--"_s << 2ull;
    QTest::newRow("coalescing tests single units") << Op::CoalescedSet << pair + pair << pair << u"-"_s << u"--"_s << 2ull;
    QTest::newRow("line endings to LF") << Op::LineEndings << u"a\r\nb\rc\nd"_s << QString() << u"\n"_s
                                        << u"a\nb\nc\nd"_s << 2ull;
    QTest::newRow("line endings to CR LF") << Op::LineEndings << u"a\r\nb\rc\nd"_s << QString() << u"\r\n"_s
                                           << u"a\r\nb\r\nc\r\nd"_s << 3ull;
}

void StringReplacerTest::replacesInPlaceAndBuffered()
{
    QFETCH(Op, op);
    QFETCH(QString, input);
    QFETCH(QString, what);
    QFETCH(QString, replacement);
    QFETCH(QString, expected);
    QFETCH(quint64, count);
    const auto run = [&](VeltoStringReplacer &replacer) -> quint64 {
        const VeltoCharacterSet set = VeltoCharacterSet::characterSetWithCharactersInString(what);
        switch (op) {
        case Op::String: return replacer.replaceAllOccurrencesOfString(what, replacement);
        case Op::Set: return replacer.replaceAllCharactersInSet(set, replacement);
        case Op::CoalescedSet: return replacer.replaceAllCharactersInSet(set, true, replacer.currentStringRange(), replacement);
        case Op::LineEndings: return replacer.replaceAllLineEndingsWithString(replacement);
        }
        return 0;
    };

    QString callers = input;
    VeltoStringReplacer inPlace(&callers);
    QCOMPARE(run(inPlace), count);
    QCOMPARE(callers, expected);
    // The same text between paddings long enough for the buffered pass.
    const QString padding(300'000, u'#');
    VeltoStringReplacer buffered(padding + input + padding);
    QCOMPARE(run(buffered), count);
    QCOMPARE(buffered.finalizedString(), padding + expected + padding);
}

void StringReplacerTest::nothingToReplaceLeavesTheInput()
{
    for (const qsizetype length : {qsizetype(100), qsizetype(600'000)}) {
        const QString input(length, u'#');
        QVERIFY(velto::stringByReplacingAllOccurrencesOfString(input, u"a"_s, u"b"_s).isSharedWith(input));
        QVERIFY(velto::stringByReplacingAllOccurrencesOfString(input, QString(), u"b"_s).isSharedWith(input));
        QVERIFY(velto::stringByReplacingAllOccurrencesOfCharactersInSet(input, VeltoCharacterSet::lineBreakCharacterSet(),
                                                                        u"b"_s).isSharedWith(input));
        QVERIFY(velto::stringByReplacingAllLineEndingsWithString(input, u"\n"_s).isSharedWith(input));
        QVERIFY(velto::stringByReplacingAllVeltoUsing(input, replacing(u"a"_s, u"b"_s)).isSharedWith(input));
        VeltoStringReplacer replacer(input);
        QCOMPARE(replacer.replaceAllUsing(replacing(u"a"_s, u"b"_s)), 0u);
        QVERIFY(!replacer.isMutated());
        QString callers = input;
        QVERIFY(!velto::replaceAllOccurrencesOfString(callers, u"a"_s, u"b"_s));
        QCOMPARE(callers.constData(), input.constData());
    }
    QString text = u"aaa"_s;
    QCOMPARE(VeltoStringReplacer::replaceAllInString(text, {1, 0}, replacing(u"a"_s, u"b"_s)), 0u);
    QCOMPARE(text, u"aaa"_s);
}

void StringReplacerTest::longStringsAreRebuiltLeavingTheCallersString_data()
{
    QTest::addColumn<qsizetype>("length");
    QTest::newRow("at the threshold: in place") << qsizetype(524'288);
    QTest::newRow("one unit more: buffered") << qsizetype(524'289);
    QTest::newRow("600,000 units") << qsizetype(600'000);
}

void StringReplacerTest::longStringsAreRebuiltLeavingTheCallersString()
{
    QFETCH(qsizetype, length);
    QString original(length, u'#');
    for (qsizetype i = 10; i < length; i += 997)
        original[i] = u'a';
    original[length - 1] = u'a';
    // The matches before and after the range stay.
    QString middle = original.mid(100, length - 200);
    const quint64 count = middle.count(u'a');
    const QString expected = original.left(100) + middle.replace(u"a"_s, u"bb"_s) + original.right(100);

    QString callers = original;
    VeltoStringReplacer replacer(&callers);
    QCOMPARE(replacer.replaceAllOccurrencesOfString(u"a"_s, {100, quint64(length) - 200}, u"bb"_s), count);
    QCOMPARE(replacer.finalizedString(), expected);
    QCOMPARE(callers, length <= 524'288 ? expected : original);
}

void StringReplacerTest::chainedPassesWorkOnTheResult()
{
    // A buffered pass shortens the string; the next pass edits that fresh string in place.
    const QString original = QString(600'000, u'a') + u"xyz"_s;
    QString callers = original;
    VeltoStringReplacer replacer(&callers);
    QCOMPARE(replacer.replaceAllOccurrencesOfString(u"a"_s, QString()), 600'000u);
    QCOMPARE(replacer.replaceAllOccurrencesOfString(u"y"_s, u"Y"_s), 1u);
    QCOMPARE(replacer.replaceAllOccurrencesOfString(u"Y"_s, u"yy"_s), 1u);
    QCOMPARE(replacer.finalizedString(), u"xyyz"_s);
    QCOMPARE(callers, original);

    // Deleting everything gives an empty string, not the out-of-memory fallback.
    VeltoStringReplacer emptied(QString(600'000, u'a'));
    QCOMPARE(emptied.replaceAllOccurrencesOfString(u"a"_s, QString()), 600'000u);
    QVERIFY(emptied.isMutated());
    QVERIFY(emptied.finalizedString().isEmpty());
}

void StringReplacerTest::blockSeesLengthChangeInBothModes()
{
    // 'a' -> "xyz" adds 2 per match. In place the block searches the edited text; buffered, the source
    // (and is asked once more, with the empty rest of the range).
    QStringList calls;
    const VeltoStringReplacer::MatchBlock block = [&](const QString &string, VeltoRange range, qint64 change,
                                                      QString *slot) {
        calls << u"%1+%2:%3"_s.arg(range.location).arg(range.length).arg(change);
        return replacing(u"a"_s, u"xyz"_s)(string, range, change, slot);
    };
    QString text = u"a-a-a"_s;
    QCOMPARE(VeltoStringReplacer::replaceAllInString(text, {0, 5}, block), 3u);
    QCOMPARE(calls, (QStringList{u"0+5:0"_s, u"3+4:2"_s, u"7+2:4"_s}));
    calls.clear();
    quint64 count = 0;
    QCOMPARE(VeltoStringReplacer::newStringByReplacingAllBuffered(block, u"a-a-a"_s, {0, 5}, &count), text);
    QCOMPARE(count, 3u);
    QCOMPARE(calls, (QStringList{u"0+5:0"_s, u"1+4:2"_s, u"3+2:4"_s, u"5+0:6"_s}));
}

void StringReplacerTest::randomisedAgainstModel()
{
    QRandomGenerator random(20261122);
    const auto randomText = [&](int minimum, int maximum) {
        QString text;
        for (int n = random.bounded(minimum, maximum + 1); n > 0; --n)
            text += u"ab \r\n"_s.at(random.bounded(5));
        return text;
    };
    for (int round = 0; round < 400; ++round) {
        const QString input = randomText(0, 40), target = randomText(1, 3), replacement = randomText(0, 4);
        const quint64 location = random.bounded(quint64(input.size()) + 1);
        const VeltoRange range{location, random.bounded(quint64(input.size()) - location + 1)};
        // The model: QString::replace on the range's text, which also takes occurrences left to right.
        QString middle = input.mid(qsizetype(range.location), qsizetype(range.length));
        quint64 modelCount = 0;
        for (qsizetype i = middle.indexOf(target); i >= 0; i = middle.indexOf(target, i + target.size()))
            ++modelCount;
        const QString model = input.left(qsizetype(range.location)) + middle.replace(target, replacement)
                              + input.mid(qsizetype(range.end()));
        const QByteArray context = u"'%1' '%2' -> '%3'"_s.arg(input, target, replacement).toUtf8();

        QString inPlace = input;
        const quint64 inPlaceCount = VeltoStringReplacer::replaceAllInString(inPlace, range, replacing(target, replacement));
        quint64 bufferedCount = 0;
        const QString buffered =
            VeltoStringReplacer::newStringByReplacingAllBuffered(replacing(target, replacement), input, range, &bufferedCount);
        VeltoStringReplacer replacer(input);
        replacer.replaceAllOccurrencesOfString(target, range, replacement);
        QVERIFY2(inPlace == model && inPlaceCount == modelCount, context.constData());
        QVERIFY2(buffered == model && bufferedCount == modelCount, context.constData());
        QVERIFY2(replacer.finalizedString() == model, context.constData());

        // The other built-in passes on the caller's own string, against a unit-by-unit model: at each unit
        // of the range, matchAt() gives the length of a match starting there (0 for none).
        const auto modelPass = [&](VeltoRange over, const std::function<qsizetype(qsizetype)> &matchAt, quint64 *count) {
            QString result = input.left(qsizetype(over.location));
            *count = 0;
            qsizetype i = qsizetype(over.location);
            while (i < qsizetype(over.end())) {
                const qsizetype length = matchAt(i);
                result += length != 0 ? replacement : QString(input.at(i));
                *count += length != 0;
                i += std::max(length, qsizetype(1));
            }
            return result + input.mid(i);
        };
        const VeltoCharacterSet set = VeltoCharacterSet::characterSetWithCharactersInString(target);
        const bool coalesced = random.bounded(2) == 1;
        quint64 setCount = 0;
        const QString setModel = modelPass(range, [&](qsizetype i) {
            qsizetype end = i;
            while (end < qsizetype(range.end()) && set.contains(input.at(end).unicode()) && (coalesced || end == i))
                ++end;
            return end - i;
        }, &setCount);
        quint64 endingCount = 0;
        const QString endingModel = modelPass({0, quint64(input.size())}, [&](qsizetype i) -> qsizetype {
            const QChar c = input.at(i);
            if (c == u'\r' && i + 1 < input.size() && input.at(i + 1) == u'\n')
                return 2;
            if (c != u'\r' && c != u'\n')
                return 0;
            return replacement.size() == 1 && replacement.at(0) == c ? 0 : 1;
        }, &endingCount);
        QString callers = input;
        VeltoStringReplacer onCallers(&callers);
        QVERIFY2(onCallers.replaceAllCharactersInSet(set, coalesced, range, replacement) == setCount
                     && callers == setModel, (context + (coalesced ? " coalesced" : "")).constData());
        callers = input;
        QVERIFY2(onCallers.replaceAllLineEndingsWithString(replacement) == endingCount && callers == endingModel,
                 context.constData());
    }
}

void StringReplacerTest::badRangesAndBlocksThrow()
{
    const auto pastTheEnd = [](const QString &, VeltoRange, qint64, QString *) { return VeltoRange{2, 5}; };
    const auto stuck = [](const QString &, VeltoRange range, qint64, QString *) { return VeltoRange{range.location, 0}; };
    QString text = u"abc"_s;
    VELTO_COMPARE_THROWN(VeltoStringReplacer(text).replaceAllOccurrencesOfString(u"a"_s, {2, 5}, u"b"_s), VeltoRangeException,
                         u"VeltoStringReplacer::replaceAllOccurrencesOfString: range {2, 5} out of bounds; string length 3"_s);
    VELTO_COMPARE_THROWN(VeltoStringReplacer::replaceAllInString(text, {1, ~0ull}, replacing(u"a"_s, u"b"_s)),
                         VeltoRangeException,
                         u"VeltoStringReplacer::replaceAllInString: range {1, 18446744073709551615} out of bounds; string length 3"_s);
    VELTO_COMPARE_THROWN((void)VeltoStringReplacer::newStringByReplacingAllBuffered(pastTheEnd, text, {0, 3}),
                         VeltoRangeException, u"VeltoStringReplacer: match block returned {2, 5}, outside the string (length 3) "
                                              "or before the search location 0"_s);
    VELTO_COMPARE_THROWN(VeltoStringReplacer(QString(600'000, u'a')).replaceAllUsing(stuck), VeltoInvalidArgumentException,
                         u"VeltoStringReplacer: match block returned an empty match with an empty replacement at the search "
                         "location 0; the pass would never advance"_s);
    QCOMPARE(text, u"abc"_s);
}

void StringReplacerTest::mutableStringOperations()
{
    // Short strings are edited, long ones get the rebuilt result.
    QString shortText = u"a1b22"_s;
    QVERIFY(velto::replaceAllOccurrencesOfString(shortText, u"2"_s, u"3"_s));
    QCOMPARE(velto::replaceAllOccurrencesOfCharactersInSet(shortText, VeltoCharacterSet::strictDecimalDigitCharacterSet(),
                                                           u"<>"_s), 3u);
    QCOMPARE(shortText, u"a<>b<><>"_s);
    QString longText = QString(600'000, u'#') + u"a\u0001b\u007F"_s;
    velto::removeCharactersInSet(longText, VeltoCharacterSet::gremlinCharacterSet());
    QCOMPARE(longText, QString(600'000, u'#') + u"ab"_s);
}

void StringReplacerTest::memoryExhaustionFallsBackToTheOriginal()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("AddressSanitizer reserves more address space than a limit could allow");
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
    QSKIP("AddressSanitizer reserves more address space than a limit could allow");
#endif
#endif
    QString source(600'000, u'#');
    for (qsizetype i = 0; i < source.size(); i += 2)
        source[i] = u'a';
    VeltoStringReplacer replacer(source);
    QCOMPARE(replacer.replaceAllOccurrencesOfString(u"#"_s, u"-"_s), 300'000u);

    // The next pass needs about 2.4 GB: allow the process 512 MB more address space than it has now.
    QFile statm(u"/proc/self/statm"_s);
    QVERIFY(statm.open(QIODevice::ReadOnly));
    const rlim_t used = rlim_t(statm.readAll().split(' ').value(0).toULongLong()) * sysconf(_SC_PAGESIZE);
    rlimit saved{};
    QCOMPARE(getrlimit(RLIMIT_AS, &saved), 0);
    struct Restore { rlimit limit; ~Restore() { setrlimit(RLIMIT_AS, &limit); } } restore{saved};
    rlimit lowered = saved;
    lowered.rlim_cur = std::min<rlim_t>(saved.rlim_max, used + (512ull << 20));
    QCOMPARE(setrlimit(RLIMIT_AS, &lowered), 0);
    const quint64 replaced = replacer.replaceAllOccurrencesOfString(u"a"_s, QString(4096, u'x'));
    QCOMPARE(setrlimit(RLIMIT_AS, &saved), 0);

    QCOMPARE(replaced, 0u);
    QVERIFY(!replacer.isMutated());
    QVERIFY(replacer.finalizedString().isSharedWith(source));
}

QTEST_GUILESS_MAIN(StringReplacerTest)
#include "stringreplacertest.moc"
