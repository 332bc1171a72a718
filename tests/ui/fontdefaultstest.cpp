// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "UserDefaults+VeltoFonts.h"

#include <QFontDatabase>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

// Runs on the offscreen platform with the DejaVu fonts installed (scripts/install-deps).
class FontDefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(folder.isValid());
        QVERIFY2(QFontDatabase::families().contains(family), "scripts/install-deps installs fonts-dejavu-core");
        defaults = std::make_unique<VeltoUserDefaults>(folder.filePath(u"fonts.plist"_s));
    }

    void fontRoundTripsAsNameAndSize()
    {
        QFont font(family);
        font.setPointSizeF(14.5);
        QVERIFY(velto::setFont(*defaults, font, key));
        QCOMPARE(defaults->objectForKey(key + u".name"_s), QVariant(family));
        QCOMPARE(defaults->objectForKey(key + u".size"_s).toDouble(), 14.5);

        const std::optional<QFont> read = velto::fontForKey(VeltoUserDefaults(defaults->filePath()), key);
        QVERIFY(read);
        QCOMPARE(read->family(), family);
        QCOMPARE(read->pointSizeF(), 14.5);
    }

    void nameWithoutSizeGivesTwelvePoints()
    {
        QVERIFY(defaults->setObject(u"dejavu serif"_s, key + u".name"_s));
        QVERIFY(defaults->removeObjectForKey(key + u".size"_s));
        const std::optional<QFont> read = velto::fontForKey(*defaults, key);
        QVERIFY(read);
        QCOMPARE(read->pointSizeF(), 12.0);
        QCOMPARE(read->family(), u"DejaVu Serif"_s); // as the font database spells it
    }

    void unknownOrMissingFontGivesTheDefault_data()
    {
        QTest::addColumn<QVariant>("name"); // invalid: no name stored
        QTest::newRow("no name") << QVariant();
        QTest::newRow("unknown family") << QVariant(u"No Such Font Family"_s);
        QTest::newRow("alias, not a family") << QVariant(u"sans-serif"_s);
        QTest::newRow("not text") << QVariant(12);
    }

    void unknownOrMissingFontGivesTheDefault()
    {
        QFETCH(QVariant, name);
        QVERIFY(defaults->setObject(name, key + u".name"_s));
        QVERIFY(defaults->setObject(20.0, key + u".size"_s));
        QFont fallback(u"DejaVu Sans Mono"_s);
        fallback.setPointSizeF(9);
        QCOMPARE(velto::fontForKey(*defaults, key, fallback), std::optional<QFont>(fallback));
        QVERIFY(!velto::fontForKey(*defaults, key));
    }

    void emptyFontRemovesBothKeys()
    {
        QVERIFY(velto::setFont(*defaults, QFont(family), key));
        QVERIFY(velto::setFont(*defaults, std::nullopt, key));
        QVERIFY(!defaults->objectForKey(key + u".name"_s).isValid());
        QVERIFY(!defaults->objectForKey(key + u".size"_s).isValid());
    }

private:
    QTemporaryDir folder;
    std::unique_ptr<VeltoUserDefaults> defaults;
    const QString key = u"editorFont"_s;
    const QString family = u"DejaVu Sans"_s;
};

QTEST_MAIN(FontDefaultsTest)
#include "fontdefaultstest.moc"
