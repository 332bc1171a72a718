// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoEncoding.h"
#include "String+VeltoSearching.h"
#include "String+VeltoWords.h"
#include "rangetostring.h"

#include <QRegularExpression>
#include <QTest>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {
constexpr VeltoRange none{VeltoNotFound, 0};
using RangeList = QList<VeltoRange>;
} // namespace

template <typename T>
concept BufferAvailableFor = requires(T &&s) { velto::characterBufferVelto(std::forward<T>(s)); };

class StringWordsEncodingTest : public QObject
{
    Q_OBJECT

private slots:
    void words_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint64>("index");
        QTest::addColumn<VeltoRange>("word");
        QTest::addColumn<VeltoRange>("caseWord");

        const QString identifier = u"parseHTMLString2Text"_s;
        QTest::newRow("word") << u"hello, world"_s << quint64(8) << VeltoMakeRange(7, 5) << VeltoMakeRange(7, 5);
        QTest::newRow("not a word character") << u"hello, world"_s << quint64(5) << VeltoMakeRange(5, 0)
                                              << VeltoMakeRange(5, 0);
        QTest::newRow("past the end") << u"hello"_s << quint64(5) << none << none;
        QTest::newRow("low half of a letter pair") << u"x\U0001D400y z"_s << quint64(2) << VeltoMakeRange(0, 4)
                                                   << VeltoMakeRange(1, 3);
        QTest::newRow("lower-case start") << identifier << quint64(0) << VeltoMakeRange(0, 20) << VeltoMakeRange(0, 5);
        QTest::newRow("acronym") << identifier << quint64(8) << VeltoMakeRange(0, 20) << VeltoMakeRange(5, 4);
        QTest::newRow("digit stays with its word") << identifier << quint64(15) << VeltoMakeRange(0, 20)
                                                   << VeltoMakeRange(9, 7);
        QTest::newRow("after a digit") << identifier << quint64(16) << VeltoMakeRange(0, 20) << VeltoMakeRange(16, 4);
    }

    void words()
    {
        QFETCH(QString, text);
        QFETCH(quint64, index);
        QTEST(velto::rangeOfWordAtIndex(text, index), "word");
        QTEST(velto::rangeOfCaseChangeWordAtIndex(text, index), "caseWord");
    }

    void trimmedRanges()
    {
        QCOMPARE(velto::rangeOfTrimmedWordForRange(u"x (hello), y", VeltoMakeRange(2, 8)), VeltoMakeRange(3, 5));
        QCOMPARE(velto::rangeOfTrimmedWordForRange(u"(...)", VeltoMakeRange(0, 5)), none);

        const QString padded = u" \n ab c\u3000\u2029"_s;
        QCOMPARE(velto::nonwhitespaceRangeForRange(padded, VeltoMakeRange(0, 8)), VeltoMakeRange(3, 4));
        QCOMPARE(velto::nonwhitespaceRangeForRange(padded, VeltoMakeRange(0, 3)), none);
        QCOMPARE(velto::nonwhitespaceRangeForRange(padded, VeltoMakeRange(3, 9)), none);
        QCOMPARE(velto::stringByRemovingSurroundingWhitespace(padded), u"ab c"_s);
        QString edited = padded;
        velto::deleteSurroundingWhitespace(edited);
        QCOMPARE(edited, u"ab c"_s);
        edited = u" \t "_s;
        velto::deleteSurroundingWhitespace(edited);
        QVERIFY(edited.isEmpty());

        QString built = velto::stringWithCharacter(u'a');
        velto::appendCharacter(built, u'\xD83D');
        QCOMPARE(built, QStringView(u"a\xD83D").toString());
    }

    void characterSearches()
    {
        const auto &spaces = VeltoCharacterSet::whitespaceCharacterSet();
        const auto back = VeltoStringCompareOption::Backwards;
        QCOMPARE(velto::locationOfCharacterFromSet(u"a b c", spaces, {}, 2), quint64(3));
        QCOMPARE(velto::locationOfCharacterFromSet(u"a b c", spaces, back, 3), quint64(1));
        QCOMPARE(velto::locationOfCharacterFromSet(u"a b c", spaces, {}, 6), VeltoNotFound);

        QCOMPARE(velto::rangesOfCharactersFromSetVelto(u"a b c", spaces), (RangeList{{1, 1}, {3, 1}}));
        QCOMPARE(velto::rangesOfCharactersFromSetVelto(u"a b c", spaces, back), (RangeList{{3, 1}, {1, 1}}));
        QCOMPARE(velto::rangesOfCharactersFromSetVelto(u" \tx ", spaces, VeltoStringCompareOption::Anchored),
                 (RangeList{{0, 1}, {1, 1}}));
        const auto emoji = VeltoCharacterSet::characterSetWithCharactersInString(u"\U0001F600");
        QCOMPARE(velto::rangesOfCharactersFromSetVelto(u"\U0001F600a\U0001F600", emoji), (RangeList{{0, 2}, {3, 2}}));

        QCOMPARE(velto::rangesOfStringVelto(u"aaaa", u"aa"), (RangeList{{0, 2}, {2, 2}}));
        QCOMPARE(velto::rangesOfStringVelto(u"Ab ab AB", u"ab", VeltoStringCompareOption::CaseInsensitive,
                                            VeltoMakeRange(1, 7)),
                 (RangeList{{3, 2}, {6, 2}}));
        QVERIFY(velto::rangesOfStringVelto(u"abc", u"").isEmpty());
        QVERIFY(velto::rangesOfStringVelto(u"abc", u"a", {}, VeltoMakeRange(2, 2)).isEmpty());
    }

    void collectedMatches()
    {
        const auto pair = [](QStringView s, VeltoRange in) { return velto::rangeOfStringVelto(s, u"12", {}, in); };
        QCOMPARE(velto::rangesOfMatchesVeltoInRange(u"a12b1212", VeltoMakeRange(0, 7), pair), (RangeList{{1, 2}, {4, 2}}));

        // Empty matches cannot stall the collection.
        const auto empty = [](QStringView, VeltoRange in) { return VeltoMakeRange(in.location, 0); };
        QCOMPARE(velto::rangesOfMatchesVeltoInRange(u"a\U0001F600", VeltoMakeRange(0, 3), empty),
                 (RangeList{{0, 0}, {1, 0}, {3, 0}}));
        // A match outside the search range ends it.
        const auto outside = [](QStringView, VeltoRange in) { return VeltoMakeRange(in.end(), 1); };
        QVERIFY(velto::rangesOfMatchesVeltoInRange(u"abc", VeltoMakeRange(0, 2), outside).isEmpty());
        QVERIFY(velto::rangesOfMatchesVeltoInRange(u"abc", VeltoMakeRange(0, 2), {}).isEmpty());
    }

    void paragraphs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<VeltoRange>("range");
        QTest::addColumn<quint64>("start");
        QTest::addColumn<quint64>("end");
        QTest::addColumn<quint64>("contentsEnd");

        const QString text = u"ab\r\ncd\nef"_s;
        QTest::newRow("on the LF of CR LF") << text << VeltoMakeRange(3, 0) << quint64(0) << quint64(4) << quint64(2);
        QTest::newRow("across two, ending on a break") << text << VeltoMakeRange(1, 6) << quint64(0) << quint64(7)
                                                       << quint64(6);
        QTest::newRow("last, unterminated") << text << VeltoMakeRange(9, 0) << quint64(7) << quint64(9) << quint64(9);
        QTest::newRow("empty last paragraph") << u"ab\n"_s << VeltoMakeRange(3, 0) << quint64(3) << quint64(3)
                                              << quint64(3);
        QTest::newRow("paragraph separator, not line separator")
            << u"a\u2028b\u2029c"_s << VeltoMakeRange(2, 0) << quint64(0) << quint64(4) << quint64(3);
        QTest::newRow("range past the end") << text << VeltoMakeRange(8, 2) << VeltoNotFound << VeltoNotFound
                                            << VeltoNotFound;
    }

    void paragraphs()
    {
        QFETCH(QString, text);
        QFETCH(VeltoRange, range);
        QFETCH(quint64, start);
        QFETCH(quint64, end);
        QFETCH(quint64, contentsEnd);

        quint64 gotStart = 1;
        quint64 gotEnd = 1;
        quint64 gotContentsEnd = 1;
        velto::getParagraphStart(text, &gotStart, &gotEnd, &gotContentsEnd, range);
        QCOMPARE(gotStart, start);
        QCOMPARE(gotEnd, end);
        QCOMPARE(gotContentsEnd, contentsEnd);
        const bool found = start != VeltoNotFound;
        QCOMPARE(velto::paragraphRangeForRange(text, range), found ? VeltoMakeRange(start, end - start) : none);
        QCOMPARE(velto::paragraphContentRangeForRange(text, range),
                 found ? VeltoMakeRange(start, contentsEnd - start) : none);
    }

    void composedCharacters()
    {
        const QString accented = u"e\u0301x"_s;
        QCOMPARE(velto::rangeOfComposedCharactersForRange(accented, VeltoMakeRange(1, 0)), VeltoMakeRange(0, 2));
        QCOMPARE(velto::rangeOfComposedCharactersForRange(accented, VeltoMakeRange(2, 0)), VeltoMakeRange(2, 0));
        QCOMPARE(velto::rangeOfComposedCharactersForRange(u"\U0001F44D\U0001F3FD!", VeltoMakeRange(2, 1)),
                 VeltoMakeRange(0, 4));
        QCOMPARE(velto::rangeOfComposedCharactersForRange(u"a\r\n", VeltoMakeRange(2, 0)), VeltoMakeRange(1, 2));
        QCOMPARE(velto::rangeOfComposedCharactersForRange(u"ab", VeltoMakeRange(1, 2)), none);
    }

    void fourCharCodes()
    {
        QCOMPARE(velto::stringWithFourCharCode(0x54455854), u"TEXT"_s);
        QCOMPARE(velto::fourCharCodeValue(u"TEXT"), 0x54455854u);
        QCOMPARE(velto::fourCharCodeValue(u"TEX"), 0u);
        QCOMPARE(velto::fourCharCodeValue(velto::stringWithFourCharCode(0x00FF7F01)), 0x00FF7F01u);
        // Units are not masked: a unit above 0xFF spills into its neighbour's byte.
        QCOMPARE(velto::fourCharCodeValue(u"AAA\u0141"), 0x41414141u);
    }

    void pascalStrings()
    {
        unsigned char buffer[256];
        std::memset(buffer, 0xAA, sizeof buffer);
        QVERIFY(velto::getPascalString(u"Café", buffer));
        const unsigned char cafe[] = {4, 'C', 'a', 'f', 0x8E, 0xAA};
        QCOMPARE(QByteArrayView(buffer, 6), QByteArrayView(cafe, 6));

        QVERIFY(!velto::getPascalString(u"日本", buffer));
        QCOMPARE(int(buffer[0]), 0);
        QVERIFY(!velto::getPascalString(u"a\xD800", buffer));
        QVERIFY(velto::getPascalString(QString(255, u'a'), buffer));
        QCOMPARE(int(buffer[0]), 255);
        QVERIFY(!velto::getPascalString(QString(256, u'a'), buffer));

        unsigned char small[3] = {0xAA, 0xAA, 0xAA};
        QVERIFY(!velto::getPascalString(u"abc", small, sizeof small));
        QVERIFY(velto::getPascalString(u"ab", small, sizeof small));
        QCOMPARE(QByteArrayView(small, 3), QByteArrayView("\x02" "ab"));
        QVERIFY(!velto::getPascalString(u"", nullptr, 10));
    }

    void decoding_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QByteArray>("encoding");
        QTest::addColumn<QString>("expected"); // null when decoding must fail

        QTest::newRow("UTF-8") << QByteArray("caf\xC3\xA9") << QByteArray("UTF-8") << u"café"_s;
        QTest::newRow("Mac Roman") << QByteArray("\x8E") << QByteArray("macintosh") << u"é"_s;
        QTest::newRow("UTF-16LE") << QByteArray("a\0\x3D\xD8\x00\xDE", 6) << QByteArray("utf-16le") << u"a\U0001F600"_s;
        QTest::newRow("invalid UTF-8") << QByteArray("caf\xE9") << QByteArray("UTF-8") << QString();
        QTest::newRow("truncated UTF-8") << QByteArray("caf\xC3") << QByteArray("UTF-8") << QString();
        QTest::newRow("unknown encoding") << QByteArray("abc") << QByteArray("no-such-encoding") << QString();
        QTest::newRow("no bytes") << QByteArray() << QByteArray("UTF-8") << u""_s;
    }

    void decoding()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QByteArray, encoding);
        QFETCH(QString, expected);
        const QString decoded = velto::stringWithData(bytes, encoding);
        QCOMPARE(decoded.isNull(), expected.isNull());
        QCOMPARE(decoded, expected);
        QCOMPARE(velto::stringWithBytes(bytes.constData(), quint64(bytes.size()), encoding), decoded);
    }

    void lossyConversion()
    {
        QCOMPARE(velto::stringByLossyConversionToEncoding(u"naïve 日本"_s, "US-ASCII"), u"na?ve ??"_s);
        QCOMPARE(velto::stringByLossyConversionToEncoding(u"a\U0001F600"_s, "macintosh"), u"a?"_s);
        const QString clean = u"naïve"_s;
        QCOMPARE(velto::stringByLossyConversionToEncoding(clean, "ISO-8859-1").constData(), clean.constData());
        QVERIFY(velto::stringByLossyConversionToEncoding(clean, "no-such-encoding").isNull());

        QVERIFY(!velto::stringWithBytes(nullptr, 0, "UTF-8").isNull());
        QVERIFY(velto::stringWithBytes(nullptr, 3, "UTF-8").isNull());
    }

    void bufferUuidAndContainment()
    {
        static_assert(BufferAvailableFor<const QString &> && !BufferAvailableFor<QString>,
                      "a buffer of a temporary string would dangle");
        const QString text = u"abc"_s;
        const char16_t *units = velto::characterBufferVelto(text);
        QCOMPARE(QStringView(units), text);
        QCOMPARE(units[3], u'\0');
        const QString null;
        QCOMPARE(*velto::characterBufferVelto(null), u'\0');

        const QRegularExpression form(u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
        const QString uuid = velto::uuidString();
        QVERIFY2(form.match(uuid).hasMatch(), qPrintable(uuid));
        QVERIFY(velto::uuidString() != uuid);

        QVERIFY(velto::containsStringVelto(u"", u""));
        QVERIFY(velto::containsStringVelto(u"abc", u"bc"));
        QVERIFY(!velto::containsStringVelto(u"abc", u"B"));
        QVERIFY(velto::containsStringVelto(u"abc", u"B", VeltoStringCompareOption::CaseInsensitive));
        QVERIFY(!velto::containsStringVelto(u"abc", u"ab", VeltoStringCompareOption::Anchored
                                                               | VeltoStringCompareOption::Backwards));
    }
};

QTEST_GUILESS_MAIN(StringWordsEncodingTest)
#include "stringwordsencodingtest.moc"
