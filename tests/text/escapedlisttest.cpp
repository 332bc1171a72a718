// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "StringList+VeltoEscapedList.h"

#include "veltotest.h"
#include <QTest>

using namespace Qt::StringLiterals;

class EscapedListTest : public QObject
{
    Q_OBJECT

private slots:
    void joining_data()
    {
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QString>("joined");

        QTest::newRow("escaped separator") << QStringList{u"a,b"_s, u"c;d"_s} << u"a,b;c\\;d"_s;
        QTest::newRow("empty list") << QStringList{} << QString();
        QTest::newRow("one element, escaped") << QStringList{u"c;d"_s} << u"c\\;d"_s;
        QTest::newRow("escape escaped") << QStringList{u"a\\"_s, u"b"_s} << u"a\\\\;b"_s;
        QTest::newRow("empty elements") << QStringList{QString(), QString()} << u";"_s;
    }

    void joining()
    {
        QFETCH(QStringList, list);
        QTEST(velto::componentsJoinedByCharacter(list, u';', u'\\'), "joined");
    }

    void splitting_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("separators");
        QTest::addColumn<QStringList>("list");

        QTest::newRow("escaped separator") << u"a,b;c\\;d"_s << u";"_s << QStringList{u"a,b"_s, u"c;d"_s};
        QTest::newRow("trailing separator adds nothing") << u"a;"_s << u";"_s << QStringList{u"a"_s};
        QTest::newRow("leading separator adds an empty element") << u";a"_s << u";"_s << QStringList{QString(), u"a"_s};
        QTest::newRow("inner empty element") << u"a;;b"_s << u";"_s << QStringList{u"a"_s, QString(), u"b"_s};
        QTest::newRow("empty text is one empty element") << QString() << u";"_s << QStringList{QString()};
        QTest::newRow("plain text") << u"abc"_s << u";"_s << QStringList{u"abc"_s};
        QTest::newRow("escape last stands for itself") << u"a\\"_s << u";"_s << QStringList{u"a\\"_s};
        QTest::newRow("escape before an ordinary unit kept") << u"a\\b;c"_s << u";"_s
                                                             << QStringList{u"a\\b"_s, u"c"_s};
        QTest::newRow("escaped escape, then separator") << u"a\\\\;b"_s << u";"_s << QStringList{u"a\\"_s, u"b"_s};
        QTest::newRow("any member separates") << u"a;b,c"_s << u";,"_s << QStringList{u"a"_s, u"b"_s, u"c"_s};
        QTest::newRow("escape wins over the set") << u"a\\;b"_s << u";\\"_s << QStringList{u"a;b"_s};
    }

    void splitting()
    {
        QFETCH(QString, text);
        QFETCH(QString, separators);
        QFETCH(QStringList, list);
        QCOMPARE(velto::componentsSeparatedByCharactersInSet(
                     text, VeltoCharacterSet::characterSetWithCharactersInString(separators), u'\\'),
                 list);
    }

    void randomListsRoundTrip()
    {
        // Elements are drawn from separators, escapes, a surrogate pair and letters; a list round-trips when
        // its last element is not empty (a trailing separator reads as nothing) or it has one element.
        const QStringList pieces{u";"_s, u"\\"_s, u"\U0001F600"_s, u"a"_s, u"bc"_s, u"\\;"_s};
        const VeltoCharacterSet separators = VeltoCharacterSet::characterSetWithCharactersInString(u";");
        VeltoTestRandom random(20261122);
        for (int round = 0; round < 2000; ++round) {
            QStringList list;
            const int count = random.bounded(1, 6);
            for (int i = 0; i < count; ++i) {
                QString element;
                for (int n = random.bounded(0, 5); n > 0; --n)
                    element += pieces.at(random.bounded(pieces.size()));
                list.append(element);
            }
            if (count > 1 && list.constLast().isEmpty())
                list.last() = u"z"_s;
            const QString joined = velto::componentsJoinedByCharacter(list, u';', u'\\');
            QVERIFY2(velto::componentsSeparatedByCharactersInSet(joined, separators, u'\\') == list,
                     qPrintable(u"joined \"%1\""_s.arg(joined)));
        }
    }
};

QTEST_GUILESS_MAIN(EscapedListTest)
#include "escapedlisttest.moc"
