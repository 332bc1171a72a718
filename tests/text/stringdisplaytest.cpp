// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoDisplay.h"

#include "VeltoCharacterSet.h"

#include <QRandomGenerator>
#include <QTest>

#include <cwctype>

namespace {

// The wrapping rule read literally: every unit is walked with a column and a run count.
QString hardWrapModel(const QString &s, qsizetype length)
{
    if (length == 0 || s.size() <= length)
        return s;
    const VeltoCharacterSet &whitespace = VeltoCharacterSet::whitespaceAndNewlineCharacterSet();
    const auto isSpace = [&](qsizetype k) { return whitespace.contains(s.at(k).unicode()); };
    QString result;
    qsizetype copied = 0, column = 0, run = 0, i = 0;
    while (i < s.size()) {
        if (s.at(i) == u'\n' || s.at(i) == u'\f') {
            column = 0;
            ++i;
            continue;
        }
        ++column;
        run = isSpace(i) ? 0 : run + 1;
        if (column < length) {
            ++i;
            continue;
        }
        qsizetype breakAt = i;
        if (!isSpace(i)) {
            qsizetype count = run;
            for (qsizetype j = i; j < s.size() && count <= length && !isSpace(j); ++j)
                ++count;
            if (column > run && count < length)
                breakAt = i - run;
            else if (breakAt > 0 && s.at(breakAt - 1).isHighSurrogate() && s.at(breakAt).isLowSurrogate())
                --breakAt;
        }
        result += s.mid(copied, breakAt - copied) + u'\n';
        copied = breakAt;
        const qsizetype width = breakAt + 1 < s.size() && s.at(breakAt).isHighSurrogate()
                && s.at(breakAt + 1).isLowSurrogate() ? 2 : 1;
        i = breakAt + width;
        column = run = width - 1;
    }
    return result + s.mid(copied);
}

} // namespace

using namespace Qt::StringLiterals;

class StringDisplayTest : public QObject
{
    Q_OBJECT

private slots:
    void userDisplayOrder_data();
    void userDisplayOrder();
    void prettyTruncation_data();
    void prettyTruncation();
    void prettyTruncationDefaults();
    void hardWrapping_data();
    void hardWrapping();
    void hardWrappingMatchesTheUnitByUnitRule();
    void caseChanges();
};

void StringDisplayTest::userDisplayOrder_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<qint64>("order");

    QTest::newRow("digit runs by value, leading spaces ignored") << u"  File 2"_s << u"File 10"_s << qint64(-1);
    QTest::newRow("leading tab and line break ignored") << u"\n\tabc"_s << u"abc"_s << qint64(0);
    QTest::newRow("alphabet before code order") << u"apple"_s << u"Banana"_s << qint64(-1);
    QTest::newRow("empty first") << QString() << u"a"_s << qint64(-1);
}

void StringDisplayTest::userDisplayOrder()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    QFETCH(qint64, order);
    QCOMPARE(velto::veltoUserDisplayCompare(a, b), order);
}

void StringDisplayTest::prettyTruncation_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("length");
    QTest::addColumn<bool>("allowLineBreak");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("expected");

    QTest::newRow("cut at the space before the last word")
        << u"Hello world"_s << quint64(8) << true << u"..."_s << u"Hello..."_s;
    QTest::newRow("fits") << u"Hello"_s << quint64(5) << true << u"..."_s << u"Hello"_s;
    QTest::newRow("no space: cut at the length") << u"Helloworld"_s << quint64(5) << true << u"…"_s << u"Hello…"_s;
    QTest::newRow("a tab drops the last word even when it fits")
        << u"one\ttwo"_s << quint64(20) << true << u"..."_s << u"one"_s;
    QTest::newRow("gremlins become spaces") << u"x\u0001y\uFFFCz end"_s << quint64(20) << true << QString()
                                           << u"x y z"_s;
    QTest::newRow("line break not allowed") << u"ab\ncd"_s << quint64(10) << false << u"..."_s << u"ab..."_s;
    QTest::newRow("spaces trimmed, newlines kept") << u"  ab\n cd ef"_s << quint64(9) << true << QString()
                                                   << u"ab\n cd"_s;
    QTest::newRow("zero length") << u"abc"_s << quint64(0) << true << u"..."_s << u"..."_s;
    QTest::newRow("surrogate pair not split: cut before it")
        << u"ab\U0001F600cd"_s << quint64(3) << true << u"…"_s << u"ab…"_s;
}

void StringDisplayTest::prettyTruncation()
{
    QFETCH(QString, text);
    QFETCH(quint64, length);
    QFETCH(bool, allowLineBreak);
    QFETCH(QString, suffix);
    QFETCH(QString, expected);
    QCOMPARE(velto::stringByPrettyTruncationToLength(text, length, allowLineBreak, suffix), expected);
}

void StringDisplayTest::prettyTruncationDefaults()
{
    // Line breaks allowed and no suffix.
    QCOMPARE(velto::stringByPrettyTruncationToLength(u"Hello world"_s, 8), u"Hello"_s);
    QCOMPARE(velto::stringByPrettyTruncationToLength(u"ab\ncd"_s, 10), u"ab\ncd"_s);
}

void StringDisplayTest::hardWrapping_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<quint64>("lineLength");
    QTest::addColumn<QString>("expected");

    QTest::newRow("words: the breaking space starts the next line") << u"aa bb cc"_s << quint64(4)
                                                                    << u"aa\n bb\n cc"_s;
    QTest::newRow("long word: first line one short") << u"abcdefghij"_s << quint64(4) << u"abc\ndefg\nhij"_s;
    QTest::newRow("fits") << u"abcd"_s << quint64(4) << u"abcd"_s;
    QTest::newRow("zero line length") << u"abc def"_s << quint64(0) << u"abc def"_s;
    QTest::newRow("space at the column limit") << u"abc def"_s << quint64(4) << u"abc\n def"_s;
    QTest::newRow("line feed resets the column") << u"ab\ncd ef"_s << quint64(4) << u"ab\ncd\n ef"_s;
    QTest::newRow("surrogate pair not split: break before it")
        << u"ab\U0001F600cdefg"_s << quint64(4) << u"ab\n\U0001F600cd\nefg"_s;
}

void StringDisplayTest::hardWrapping()
{
    QFETCH(QString, text);
    QFETCH(quint64, lineLength);
    QFETCH(QString, expected);
    QCOMPARE(velto::stringByHardWrappingToLineLength(text, lineLength), expected);
}

void StringDisplayTest::hardWrappingMatchesTheUnitByUnitRule()
{
    const quint32 seed = 20261122;
    QRandomGenerator random(seed);
    const QStringList pieces{u"a"_s, u"b"_s, u" "_s, u"\n"_s, u"\f"_s, u"\r"_s, u"\t"_s, u"\u2028"_s,
                             u"\U0001F600"_s, QString(QChar(0xD800)), u"cdefghijklmn"_s};
    for (int round = 0; round < 3000; ++round) {
        QString text;
        for (int n = random.bounded(0, 60); n > 0; --n)
            text += pieces.at(random.bounded(round % 2 == 0 ? 3 : pieces.size())); // often plain words
        const qsizetype length = random.bounded(0, 12);
        QVERIFY2(velto::stringByHardWrappingToLineLength(text, quint64(length)) == hardWrapModel(text, length),
                 qPrintable(u"seed %1, round %2, length %3: \"%4\""_s.arg(seed).arg(round).arg(length).arg(text)));
    }
}

void StringDisplayTest::caseChanges()
{
    QCOMPARE(velto::stringByMatchingCase(u"hello wORLD"_s, QString()), u"hello wORLD"_s);
    QCOMPARE(velto::stringByMatchingCase(u"hello wORLD"_s, u"word"_s), u"hello wORLD"_s);
    QCOMPARE(velto::stringByMatchingCase(u"straße"_s, u"ABC"_s), u"STRASSE"_s);
    QCOMPARE(velto::stringByMatchingCase(u"hello wORLD\tagain"_s, u"Word"_s), u"Hello World\tAgain"_s);
    QCOMPARE(velto::stringByMatchingCase(u"hello"_s, u"A1"_s), u"Hello"_s); // not all capitals

    QCOMPARE(velto::toggledcaseString(u"Hello World 123"_s), u"hELLO wORLD 123"_s);
    if (!std::iswupper(0x100))
        QSKIP("the C library's locale has no case classes beyond ASCII (the test runs under C.UTF-8)");
    // Formatted with "%c": Latin-1 results survive, wider ones keep only their low byte.
    QCOMPARE(velto::toggledcaseString(u"éĀ"_s), u"\u00C9\u0001"_s);
}

QTEST_GUILESS_MAIN(StringDisplayTest)
#include "stringdisplaytest.moc"
