// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "featuresettings.h"

#include <QTest>

using namespace Qt::StringLiterals;

class FontFeaturesTest : public QObject
{
    Q_OBJECT

private slots:
    void addingReplacesOrAppends_data()
    {
        QTest::addColumn<Settings>("list");
        QTest::addColumn<bool>("allowSecond");
        QTest::addColumn<Settings>("expected");
        QTest::newRow("no list") << Settings{} << false << Settings{{3, 3}};
        QTest::newRow("same type replaced in place") << Settings{{1, 2}, {3, 1}, {37, 1}} << false
                                                     << Settings{{1, 2}, {3, 3}, {37, 1}};
        QTest::newRow("second setting allowed") << Settings{{1, 2}, {3, 1}} << true << Settings{{1, 2}, {3, 1}, {3, 3}};
        QTest::newRow("only the first of a type replaced") << Settings{{3, 1}, {3, 2}} << false << Settings{{3, 3}, {3, 2}};
        QTest::newRow("other type appended") << Settings{{37, 1}} << false << Settings{{37, 1}, {3, 3}};
    }

    void addingReplacesOrAppends()
    {
        QFETCH(Settings, list);
        QFETCH(bool, allowSecond);
        QFETCH(Settings, expected);
        const QVariantList given = listOf(list);
        QCOMPARE(settingsOf(VeltoFontFeaturesByAdding(given, 3, 3, allowSecond)), expected);
        QCOMPARE(settingsOf(given), list); // never changed in place
    }

    void removingAndReading()
    {
        const QVariantList list = listOf({{1, 2}, {3, 1}, {3, 4}});
        QVERIFY(VeltoFontFeaturesByRemoving(list, 37).isSharedWith(list));
        QCOMPARE(settingsOf(VeltoFontFeaturesByRemoving(list, 3)), (Settings{{1, 2}, {3, 4}}));

        qint64 selector = -1;
        QVERIFY(VeltoFontFeatures_GetValueForFeature(list, 3, &selector));
        QCOMPARE(selector, 1);
        QVERIFY(VeltoFontFeatures_GetValueForFeature(list, 1));
        QVERIFY(!VeltoFontFeatures_GetValueForFeature(list, 37, &selector));
        QCOMPARE(selector, 1); // untouched when absent
        QVERIFY(!VeltoFontFeatures_GetValueForFeature({}, 0));
    }

    void settingsAreReadAsIntegers()
    {
        // Numbers stored as text (as a hand-edited property list may hold them) count; other elements match nothing.
        const QVariantList list{u"not a setting"_s,
                                QVariantMap{{VeltoFontFeatureKey_Type, u"37"_s}, {VeltoFontFeatureKey_Value, 1.0}}};
        QVERIFY(!VeltoFontFeatures_GetValueForFeature(list, 0));
        QCOMPARE(VeltoFontFeaturesChangeCaseValueForFeatures(list), 3u);
    }

    void changeCaseValues_data()
    {
        QTest::addColumn<qint32>("type");
        QTest::addColumn<quint64>("selector");
        QTest::addColumn<bool>("valid"); // as a change-case value, whatever the type
        QTest::addColumn<quint32>("changeCase");
        QTest::newRow("letter case 0") << 3 << quint64(0) << true << 0u;
        QTest::newRow("letter case 2") << 3 << quint64(2) << true << 2u;
        QTest::newRow("letter case 4") << 3 << quint64(4) << true << 4u;
        QTest::newRow("letter case 5") << 3 << quint64(5) << false << 999u;
        QTest::newRow("letter case 11") << 3 << quint64(11) << false << 999u;
        QTest::newRow("letter case 12 is small caps") << 3 << quint64(12) << true << 3u;
        QTest::newRow("letter case 13") << 3 << quint64(13) << false << 999u;
        QTest::newRow("lower case 1 is small caps") << 37 << quint64(1) << true << 3u;
        QTest::newRow("lower case 2") << 37 << quint64(2) << true << 999u;
        QTest::newRow("upper case 1") << 38 << quint64(1) << true << 999u;
        QTest::newRow("huge selector") << 3 << (quint64(1) << 32) << false << 999u;
    }

    void changeCaseValues()
    {
        QFETCH(qint32, type);
        QFETCH(quint64, selector);
        QFETCH(bool, valid);
        QFETCH(quint32, changeCase);
        QCOMPARE(VeltoFontFeatureValue_ChangeCaseIsValid(selector), valid);
        QCOMPARE(VeltoFontFeatureValue_ChangeCaseForFeatureValue(type, selector), changeCase);
    }

    void changeCaseOfLists_data()
    {
        QTest::addColumn<Settings>("list");
        QTest::addColumn<quint32>("changeCase");
        QTest::addColumn<Settings>("remaining");
        QTest::newRow("second encoding of small caps") << Settings{{3, 12}} << 3u << Settings{};
        QTest::newRow("lower case small caps") << Settings{{1, 2}, {37, 1}} << 3u << Settings{{1, 2}};
        QTest::newRow("lower case petite caps") << Settings{{37, 2}} << 999u << Settings{{-1, -1}};
        QTest::newRow("invalid letter case does not stop the search") << Settings{{3, 5}, {37, 1}, {1, 2}} << 3u
                                                                       << Settings{{3, 5}, {1, 2}};
        QTest::newRow("letter case wins") << Settings{{37, 1}, {3, 2}} << 2u << Settings{{37, 1}};
        QTest::newRow("empty") << Settings{} << 999u << Settings{{-1, -1}};
    }

    void changeCaseOfLists()
    {
        QFETCH(Settings, list);
        QFETCH(quint32, changeCase);
        QFETCH(Settings, remaining); // {-1, -1}: nothing stored
        QVariantList rest = listOf({{-1, -1}});
        QCOMPARE(VeltoFontFeaturesChangeCaseValueForFeatures(listOf(list), &rest), changeCase);
        QCOMPARE(settingsOf(rest), remaining);
    }
};

QTEST_APPLESS_MAIN(FontFeaturesTest)
#include "fontfeaturestest.moc"
