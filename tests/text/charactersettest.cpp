// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoSearching.h"
#include "VeltoCharacterSet.h"
#include "rangetostring.h"

#include <QTest>

using namespace Qt::StringLiterals;

using SetGetter = const VeltoCharacterSet &(*)();

Q_DECLARE_METATYPE(SetGetter)

class CharacterSetTest : public QObject
{
    Q_OBJECT

private slots:
    void namedSetMembers_data()
    {
        QTest::addColumn<SetGetter>("set");
        QTest::addColumn<QList<uint>>("members");
        QTest::addColumn<QList<uint>>("others");

        QTest::newRow("gremlins") << SetGetter(&VeltoCharacterSet::gremlinCharacterSet)
                                  << QList<uint>{0x00, 0x08, 0x0B, 0x0E, 0x1F, 0x7F, 0x83, 0x86, 0x9F}
                                  << QList<uint>{0x09, 0x0A, 0x0C, 0x0D, 0x20, 0x84, 0x85, 0xA0};
        QTest::newRow("line breaks") << SetGetter(&VeltoCharacterSet::lineBreakCharacterSet)
                                     << QList<uint>{0x0A, 0x0C, 0x0D, 0x2029, 0x2028, 0x85}
                                     << QList<uint>{0x0B, 0x09, 0x20};
        QTest::newRow("spaces") << SetGetter(&VeltoCharacterSet::spaceCharacterSet)
                                << QList<uint>{0x20, 0xA0, 0x2000, 0x200A, 0x200B, 0x202F, 0x205F, 0x3000, 0x303F}
                                << QList<uint>{0x09, 0x0A, 0x200C};
        QTest::newRow("newlines") << SetGetter(&VeltoCharacterSet::newlineCharacterSet)
                                  << QList<uint>{0x0A, 0x0B, 0x0C, 0x0D, 0x85, 0x2028, 0x2029} << QList<uint>{0x09, 0x0E, 0x20};
        QTest::newRow("all whitespace") << SetGetter(&VeltoCharacterSet::allWhitespaceCharacterSet)
                                        << QList<uint>{0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20, 0x85, 0xA0, 0x2028, 0x3000}
                                        << QList<uint>{u'a', 0x200B, 0x1F600};
        QTest::newRow("non-whitespace covers every plane")
            << SetGetter(&VeltoCharacterSet::nonWhitespaceCharacterSet) << QList<uint>{u'a', 0x1F600, 0x10FFFF}
            << QList<uint>{0x20, 0x0A, 0x110000};
        QTest::newRow("strict digits are ASCII only")
            << SetGetter(&VeltoCharacterSet::strictDecimalDigitCharacterSet) << QList<uint>{u'0', u'9'}
            << QList<uint>{0x0660, u'a', u'/'};
        QTest::newRow("non-alphanumeric") << SetGetter(&VeltoCharacterSet::nonAlphanumericCharacterSet)
                                          << QList<uint>{u' ', u'-', 0x1F600} << QList<uint>{u'a', u'7', 0x00E9, 0x0301};
        QTest::newRow("sentence terminals leave out the full stop")
            << SetGetter(&VeltoCharacterSet::sentenceTerminalCharacterSet) << QList<uint>{u'!', u'?', 0x3002, 0x2029}
            << QList<uint>{u'.'};
        QTest::newRow("conditional terminals add full stops")
            << SetGetter(&VeltoCharacterSet::conditionalSentenceTerminalCharacterSet)
            << QList<uint>{u'.', 0x06D4, 0xFF0E, u'!'} << QList<uint>{u','};
        QTest::newRow("quotes") << SetGetter(&VeltoCharacterSet::quoteCharacterSet)
                                << QList<uint>{0x27, 0x22, 0x2018, 0x2019, 0x201A, 0x201E, 0xAB, 0xBB}
                                << QList<uint>{u'`'};
        QTest::newRow("grouping punctuation") << SetGetter(&VeltoCharacterSet::groupingPunctuationCharacterSet)
                                              << QList<uint>{u'(', u'>', 0xBF, 0xA1, 0x201C} << QList<uint>{u'/'};
        QTest::newRow("non-printing") << SetGetter(&VeltoCharacterSet::nonPrintingCharacterSet)
                                      << QList<uint>{0x01, 0x200E, 0x202E, 0x200B, 0x0A} << QList<uint>{u'x'};
    }

    void namedSetMembers()
    {
        QFETCH(SetGetter, set);
        QFETCH(QList<uint>, members);
        QFETCH(QList<uint>, others);
        for (uint codePoint : members)
            QVERIFY2(set().contains(codePoint), qPrintable(QString::number(codePoint, 16)));
        for (uint codePoint : others)
            QVERIFY2(!set().contains(codePoint), qPrintable(QString::number(codePoint, 16)));
    }

    void editsAcrossPlanes()
    {
        VeltoCharacterSet set;
        QVERIFY(set.isEmpty());
        set.addCharactersInRange(VeltoMakeRange(0xFFF0, 0x20020)); // fills planes 1 and 2, ends in plane 3
        QCOMPARE(set.count(), quint64(0x20020));
        QVERIFY(set.contains(0xFFF0) && set.contains(0x1ABCD) && set.contains(0x3000F));
        QVERIFY(!set.contains(0xFFEF) && !set.contains(0x30010));

        set.removeCharactersInRange(VeltoMakeRange(0x10000, 0x10000));
        QCOMPARE(set.count(), quint64(0x10020));
        QVERIFY(!set.contains(0x1ABCD));

        VeltoCharacterSet inverted = set.invertedSet();
        QCOMPARE(inverted.count(), quint64(0x110000) - set.count());
        QVERIFY(inverted.contains(0x1ABCD) && !inverted.contains(0xFFF0));
        inverted.formUnionWithCharacterSet(set);
        QCOMPARE(inverted, VeltoCharacterSet::characterSetWithRange(VeltoMakeRange(0, 0x110000)));

        VeltoCharacterSet remaining = inverted;
        remaining.removeCharacterSetVelto(remaining);
        QVERIFY(remaining.isEmpty());

        // A range beyond the code space is clipped, not an error.
        VeltoCharacterSet clipped = VeltoCharacterSet::characterSetWithRange(VeltoMakeRange(0x10FFFE, 100));
        QCOMPARE(clipped.count(), quint64(2));
    }

    void copiesAreIndependent()
    {
        const VeltoCharacterSet &digits = VeltoCharacterSet::strictDecimalDigitCharacterSet();
        VeltoCharacterSet copy = digits.copyImmutable();
        copy.addCharacter(u'.');
        copy.addCharactersInString(u"\U0001F600\xDC00"); // a pair, then an unpaired low surrogate
        QVERIFY(copy.contains(u'.') && copy.contains(0x1F600) && copy.contains(0xDC00));
        QVERIFY(!digits.contains(u'.') && !digits.contains(0x1F600));
        QCOMPARE(digits.count(), quint64(10));

        VeltoCharacterSet moved = std::move(copy);
        QVERIFY(moved.contains(u'.'));
        moved.removeCharacterSetVelto(digits);
        QCOMPARE(moved.count(), quint64(3));
    }

    void searchesForSetMembers_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<VeltoCharacterSet>("set");
        QTest::addColumn<uint>("options");
        QTest::addColumn<VeltoRange>("range");
        QTest::addColumn<VeltoRange>("expected");

        const VeltoRange none{VeltoNotFound, 0};
        const auto emoji = VeltoCharacterSet::characterSetWithCharactersInString(u"\U0001F600");
        const auto high = VeltoCharacterSet::characterSetWithRange(VeltoMakeRange(0xD83D, 1));
        const uint back = uint(VeltoStringCompareOption::Backwards);
        const uint anchored = uint(VeltoStringCompareOption::Anchored);
        const auto spaces = VeltoCharacterSet::spaceCharacterSet();
        QTest::newRow("first") << u"ab cd ef"_s << spaces << 0u << VeltoMakeRange(0, 8) << VeltoMakeRange(2, 1);
        QTest::newRow("last") << u"ab cd ef"_s << spaces << back << VeltoMakeRange(0, 8) << VeltoMakeRange(5, 1);
        QTest::newRow("inside range") << u"ab cd ef"_s << spaces << 0u << VeltoMakeRange(3, 5) << VeltoMakeRange(5, 1);
        QTest::newRow("anchored miss") << u"ab cd"_s << spaces << anchored << VeltoMakeRange(0, 5) << none;
        QTest::newRow("anchored backwards") << u"ab "_s << spaces << (anchored | back) << VeltoMakeRange(0, 3)
                                            << VeltoMakeRange(2, 1);
        QTest::newRow("pair as code point") << u"a\U0001F600b"_s << emoji << 0u << VeltoMakeRange(0, 4)
                                            << VeltoMakeRange(1, 2);
        QTest::newRow("pair backwards") << u"a\U0001F600b"_s << emoji << back << VeltoMakeRange(0, 4)
                                        << VeltoMakeRange(1, 2);
        QTest::newRow("split pair is units") << u"a\U0001F600b"_s << high << 0u << VeltoMakeRange(0, 2)
                                             << VeltoMakeRange(1, 1);
        QTest::newRow("range past end") << u"a b"_s << spaces << 0u << VeltoMakeRange(2, 5) << none;
        QTest::newRow("empty range") << u"a b"_s << spaces << 0u << VeltoMakeRange(1, 0) << none;
    }

    void searchesForSetMembers()
    {
        QFETCH(QString, text);
        QFETCH(VeltoCharacterSet, set);
        QFETCH(uint, options);
        QFETCH(VeltoRange, range);
        QFETCH(VeltoRange, expected);
        QCOMPARE(velto::rangeOfCharacterFromSetVelto(text, set, VeltoStringCompareOptions::fromInt(int(options)), range),
                 expected);
    }

    void searchesForStrings_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("target");
        QTest::addColumn<uint>("options");
        QTest::addColumn<VeltoRange>("range");
        QTest::addColumn<VeltoRange>("expected");

        const VeltoRange none{VeltoNotFound, 0};
        const uint nocase = uint(VeltoStringCompareOption::CaseInsensitive);
        const uint back = uint(VeltoStringCompareOption::Backwards);
        const uint anchored = uint(VeltoStringCompareOption::Anchored);
        QTest::newRow("first") << u"one two one"_s << u"one"_s << 0u << VeltoMakeRange(0, 11) << VeltoMakeRange(0, 3);
        QTest::newRow("last") << u"one two one"_s << u"one"_s << back << VeltoMakeRange(0, 11) << VeltoMakeRange(8, 3);
        QTest::newRow("must fit the range") << u"one two one"_s << u"one"_s << 0u << VeltoMakeRange(1, 9) << none;
        QTest::newRow("case-insensitive") << u"ONE"_s << u"one"_s << nocase << VeltoMakeRange(0, 3)
                                          << VeltoMakeRange(0, 3);
        QTest::newRow("anchored") << u"xone"_s << u"one"_s << anchored << VeltoMakeRange(0, 4) << none;
        QTest::newRow("anchored at end") << u"xone"_s << u"one"_s << (anchored | back) << VeltoMakeRange(0, 4)
                                         << VeltoMakeRange(1, 3);
        QTest::newRow("empty target") << u"abc"_s << QString() << 0u << VeltoMakeRange(0, 3) << none;
        QTest::newRow("overflowing range") << u"abc"_s << u"b"_s << 0u << VeltoMakeRange(1, quint64(-1)) << none;
    }

    void searchesForStrings()
    {
        QFETCH(QString, text);
        QFETCH(QString, target);
        QFETCH(uint, options);
        QFETCH(VeltoRange, range);
        QFETCH(VeltoRange, expected);
        QCOMPARE(velto::rangeOfStringVelto(text, target, VeltoStringCompareOptions::fromInt(int(options)), range),
                 expected);
    }
};

QTEST_GUILESS_MAIN(CharacterSetTest)
#include "charactersettest.moc"
