// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "Font+VeltoAdditions.h"
#include "FontDatabase+VeltoAdditions.h"
#include "VTFontFace_p.h"
#include "VeltoFont.h"
#include "featuresettings.h"
#include "veltotest.h"

#include <QDir>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QRawFont>

using namespace Qt::StringLiterals;

namespace {

const QString Libertine = u"Linux Libertine O"_s; // has smcp and c2sc, no pcap, c2pc, unic or titl
const QString Liberation = u"Liberation Serif"_s; // has no capitals features at all

} // namespace

// Real fonts from Debian packages (scripts/install-deps), on the offscreen platform.
class FontTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QStringList families = QFontDatabase::families();
        if (!families.contains(Libertine))
            QSKIP("fonts-linuxlibertine is not installed (scripts/install-deps installs it)");
        if (!families.contains(Liberation))
            QSKIP("fonts-liberation2 is not installed (scripts/install-deps installs it)");
        if (!families.contains(u"TeX Gyre Pagella"_s))
            QSKIP("fonts-texgyre is not installed (scripts/install-deps installs it)");
    }

    void settingsAreHonouredOnlyWhereTheFaceHasTheFeature_data()
    {
        QTest::addColumn<QString>("family");
        QTest::addColumn<quint32>("type");
        QTest::addColumn<quint64>("selector");
        QTest::addColumn<bool>("honoured");
        QTest::newRow("Libertine small caps (letter case)") << Libertine << 3u << quint64(3) << true;
        QTest::newRow("Libertine small caps (lower case)") << Libertine << 37u << quint64(1) << true;
        QTest::newRow("Libertine capitals to small caps") << Libertine << 38u << quint64(1) << true;
        QTest::newRow("Libertine default lower case") << Libertine << 37u << quint64(0) << true;
        QTest::newRow("Libertine petite caps") << Libertine << 37u << quint64(2) << false;
        QTest::newRow("Libertine titling caps") << Libertine << 19u << quint64(4) << false;
        QTest::newRow("Libertine all caps (no OpenType feature)") << Libertine << 3u << quint64(1) << false;
        QTest::newRow("Pagella small caps") << u"TeX Gyre Pagella"_s << 3u << quint64(3) << true;
        QTest::newRow("Liberation small caps") << Liberation << 3u << quint64(3) << false;
        QTest::newRow("Liberation lower case small caps") << Liberation << 37u << quint64(1) << false;
    }

    void settingsAreHonouredOnlyWhereTheFaceHasTheFeature()
    {
        QFETCH(QString, family);
        QFETCH(quint32, type);
        QFETCH(quint64, selector);
        QFETCH(bool, honoured);
        const VeltoFont plain(QFont(family, 12));
        const std::optional<VeltoFont> featured = plain.fontByAddingFontFeature(type, selector);
        QCOMPARE(featured.has_value(), honoured);
        if (!featured)
            return;
        QCOMPARE(featured->font(), plain.font());
        qint64 held = -1;
        QVERIFY(featured->hasFontFeature(type, &held));
        QCOMPARE(held, qint64(selector));
    }

    void settingsAccumulate()
    {
        const VeltoFont plain(QFont(Libertine, 12));
        QCOMPARE(plain.fontByAddingChangeCaseFontFeature(0), std::optional<VeltoFont>(plain));
        QVERIFY(!plain.fontByAddingChangeCaseFontFeature(2)); // all lower case: no OpenType feature, no other encoding tried
        QVERIFY(!VeltoFont(QFont(Liberation, 12)).fontByAddingChangeCaseFontFeature(3));

        const VeltoFont caps = plain.fontByAddingChangeCaseFontFeature(3).value();
        QCOMPARE(settingsOf(caps.fontFeatures()), (Settings{{3, 3}}));
        QCOMPARE(caps.fontByAddingFontFeautures({}), std::optional<VeltoFont>(caps));
        QCOMPARE(settingsOf(caps.fontByAddingFontFeature(38, 1).value().fontFeatures()), (Settings{{3, 3}, {38, 1}}));
        QVERIFY(!caps.fontByAddingFontFeature(37, 2)); // the combined list must be honoured whole
    }

    void smallCapitalsAreShaped()
    {
        const QFont font(Libertine, 28);
        const VeltoFont caps = VeltoFont(font).fontByAddingChangeCaseFontFeature(3).value();
        const std::shared_ptr<const VTFontFace> face = VTFontFace::faceForFont(font);
        QVERIFY(face);
        const QList<quint32> nominal = velto::glyphsForCharactersInString(font, u"Ab"_s, VeltoMakeRange(0, 2));
        QCOMPARE(VeltoFont(font).glyphRunForString(u"Ab"_s).glyphIndexes(), nominal);
        const QGlyphRun shaped = caps.glyphRunForString(u"Ab"_s);
        QCOMPARE(shaped.glyphIndexes(), (QList<quint32>{nominal.at(0), face->glyphNamed("b.sc")}));
        QVERIFY(shaped.glyphIndexes().at(1) != 0);
        QCOMPARE(shaped.positions().size(), 2);
        QVERIFY(shaped.positions().at(1).x() > 10); // after a 28-pixel capital A
        if (qEnvironmentVariableIntValue("VELTO_WRITE_IMAGES") == 1)
            writeSample();
    }

    void propertyListRoundTrip()
    {
        QFont bold(Libertine);
        bold.setBold(true);
        bold.setPointSizeF(14.5);
        const VeltoFont caps = VeltoFont(bold).fontByAddingChangeCaseFontFeature(3).value();
        const QVariantMap plist = caps.propertyListRepresentation();
        QCOMPARE(plist.value(u"fontName"_s), QVariant(u"LinLibertineOB"_s));
        QCOMPARE(plist.value(u"pointSize"_s).toDouble(), 14.5);

        VeltoTestDefaults defaults; // through the property-list file and back
        QVERIFY(defaults.set(u"heading"_s, plist));
        const QVariantMap stored = VeltoUserDefaults(defaults->filePath()).objectForKey(u"heading"_s).toMap();
        VeltoError error;
        const VeltoFont read = VeltoFont::initWithPropertyListRepresentation(stored, &error);
        QCOMPARE(error.code(), 0);
        QCOMPARE(QFontInfo(read.font()).family(), Libertine);
        QVERIFY(QFontInfo(read.font()).bold());
        QCOMPARE(read.font().pointSizeF(), 14.5);
        QCOMPARE(settingsOf(read.fontFeatures()), (Settings{{3, 3}}));
    }

    void badPropertyListsStillGiveAFont_data()
    {
        const QVariantMap smallCaps{{VeltoFontFeatureKey_Type, 3}, {VeltoFontFeatureKey_Value, 3}};
        const QVariantMap libertine{{u"fontName"_s, u"LinLibertineO"_s}};
        const auto with = [](QVariantMap map, const QString &key, const QVariant &value) {
            map.insert(key, value);
            return map;
        };
        QTest::addColumn<QVariantMap>("plist");
        QTest::addColumn<QString>("family"); // empty: the application font
        QTest::addColumn<double>("size");
        QTest::addColumn<qint64>("errorCode");
        QTest::newRow("unknown name") << QVariantMap{{u"fontName"_s, u"NoSuchFont-Bold"_s}, {u"pointSize"_s, 20}}
                                      << QString() << 20.0 << qint64(0);
        QTest::newRow("name not text") << QVariantMap{{u"fontName"_s, 7}} << QString() << 12.0 << qint64(4);
        QTest::newRow("no size") << QVariantMap{{u"fontName"_s, u"LiberationSerif"_s}} << Liberation << 12.0 << qint64(0);
        QTest::newRow("size not a number") << with(libertine, u"pointSize"_s, u"big"_s) << Libertine << 12.0 << qint64(4);
        QTest::newRow("negative size") << with(libertine, u"pointSize"_s, -3) << Libertine << 12.0 << qint64(0);
        QTest::newRow("tiny size") << with(libertine, u"pointSize"_s, 0.25) << Libertine << 0.25 << qint64(0);
        QTest::newRow("features not a list") << with(libertine, u"fontFeatures"_s, u"smcp"_s) << Libertine << 12.0 << qint64(4);
        QTest::newRow("setting not a map") << with(libertine, u"fontFeatures"_s, QVariantList{3}) << Libertine << 12.0 << qint64(4);
        QTest::newRow("type not a number")
            << with(libertine, u"fontFeatures"_s, QVariantList{with(smallCaps, VeltoFontFeatureKey_Type, QVariantList{3})})
            << Libertine << 12.0 << qint64(4);
        QTest::newRow("extra entry") << with(libertine, u"fontFeatures"_s, QVariantList{with(smallCaps, u"x"_s, 1)})
                                     << Libertine << 12.0 << qint64(1);
        QTest::newRow("not honoured") << QVariantMap{{u"fontName"_s, u"LiberationSerif"_s}, {u"fontFeatures"_s, QVariantList{smallCaps}}}
                                      << Liberation << 12.0 << qint64(1);
    }

    void badPropertyListsStillGiveAFont()
    {
        QFETCH(QVariantMap, plist);
        QFETCH(QString, family);
        QFETCH(double, size);
        QFETCH(qint64, errorCode);
        VeltoError error;
        const VeltoFont read = VeltoFont::initWithPropertyListRepresentation(plist, &error);
        QCOMPARE(error.code(), errorCode);
        QCOMPARE(read.font().family(), family.isEmpty() ? QGuiApplication::font().family() : family);
        QCOMPARE(read.font().pointSizeF(), size);
        QVERIFY(read.fontFeatures().isEmpty());
        QCOMPARE(read.propertyListRepresentation().value(u"pointSize"_s).toDouble(), size);
    }

    void fontsByName()
    {
        const std::optional<QFont> bold = velto::fontWithName(u"LinLibertineOB"_s, 0);
        QVERIFY(bold);
        QVERIFY(QFontInfo(*bold).bold());
        QCOMPARE(bold->pointSizeF(), 12.0);
        QCOMPARE(velto::fontName(*bold), u"LinLibertineOB"_s);
        QCOMPARE(velto::fontWithName(u"liberation serif"_s, 9)->family(), Liberation);
        QVERIFY(!velto::fontWithName(u"sans-serif"_s, 9)); // an alias fontconfig resolves, not a font
        QVERIFY(!velto::fontWithName(u"linlibertineob"_s, 9)); // PostScript names are exact

        const std::optional<QFont> regular = velto::fontWithFamilyName(u"linux libertine o"_s);
        QCOMPARE(regular->family(), Libertine);
        QCOMPARE(regular->pointSizeF(), 12.0);
        QVERIFY(!QFontInfo(*regular).bold() && !QFontInfo(*regular).italic());
        QVERIFY(QFontInfo(*velto::fontWithFamilyName(u"LiberationSerif-Bold"_s)).bold());
        QVERIFY(!velto::fontWithFamilyName(u"No Such Family"_s));
        QCOMPARE(velto::menuItemFont().family(), QFontDatabase::systemFont(QFontDatabase::GeneralFont).family());
        QCOMPARE(velto::menuItemFont().pointSizeF(), 14.0);
    }

    void fallbackChains_data()
    {
        QTest::addColumn<QString>("chain");
        QTest::addColumn<QStringList>("acceptable"); // the originals, then the Linux stand-ins
        QTest::newRow("times") << u"times"_s
                               << QStringList{u"Times New Roman"_s, u"Times"_s, u"Nimbus Roman"_s, u"TeX Gyre Termes"_s, Liberation};
        QTest::newRow("helvetica") << u"helvetica"_s
                                   << QStringList{u"Helvetica"_s, u"Nimbus Sans"_s, u"TeX Gyre Heros"_s, u"Liberation Sans"_s};
        QTest::newRow("monospace") << u"monospace"_s
                                   << QStringList{u"Courier"_s, u"Courier New"_s, u"Monaco"_s, u"Nimbus Mono PS"_s,
                                                  u"TeX Gyre Cursor"_s, u"Liberation Mono"_s, u"DejaVu Sans Mono"_s};
        QTest::newRow("lucida") << u"lucida"_s << QStringList{u"Lucida Grande"_s, u"DejaVu Sans"_s};
        QTest::newRow("bold lucida") << u"bold lucida"_s << QStringList{u"Lucida Grande"_s, u"DejaVu Sans"_s};
    }

    void fallbackChains()
    {
        QFETCH(QString, chain);
        QFETCH(QStringList, acceptable);
        const QHash<QString, QFont (*)(double)> chains{{u"times"_s, velto::timesFontOfSize},
                                                       {u"helvetica"_s, velto::helveticaFontOfSize},
                                                       {u"monospace"_s, velto::monospaceFontOfSize},
                                                       {u"lucida"_s, velto::lucidaGrandeFontOfSize},
                                                       {u"bold lucida"_s, velto::boldLucidaGrandeFontOfSize}};
        const QFont font = chains.value(chain)(13);
        QVERIFY2(acceptable.contains(QFontInfo(font).family()), qPrintable(QFontInfo(font).family()));
        QCOMPARE(font.pointSizeF(), 13.0);
        QCOMPARE(QFontInfo(font).bold(), chain.startsWith(u"bold"));
    }

    void glyphsAreThoseQtDraws()
    {
        const QString text = u"Ab-\u0133\u20ac\U0001F600z"_s; // ĳ, €, an emoji no font here has
        for (const QString &family : {Libertine, Liberation, u"DejaVu Sans"_s}) {
            const QFont font(family, 12);
            QCOMPARE(velto::glyphsForCharactersInString(font, text, VeltoMakeRange(0, text.size())),
                     QRawFont::fromFont(font).glyphIndexesForString(text));
        }
        const QFont font(Libertine, 12);
        QCOMPARE(velto::glyphsForCharactersInString(font, text, VeltoMakeRange(5, 3)).size(), 2); // the pair is one
        VELTO_COMPARE_THROWN((void)velto::glyphsForCharactersInString(font, text, VeltoMakeRange(6, 3)), VeltoRangeException,
                             u"velto::glyphsForCharactersInString: range {6, 3} out of bounds; string length 8"_s);
    }

    void hyphensAreCachedByFontName()
    {
        const QFont font(Libertine, 12);
        const quint32 hyphen = velto::glyphsForCharactersInString(font, u"-a"_s, VeltoMakeRange(0, 2)).at(0);
        velto::VeltoHyphenGlyphCache cache;
        QVERIFY(velto::isHyphenationGlyph(font, hyphen, cache));
        QVERIFY(!velto::isHyphenationGlyph(font, hyphen + 1, cache));
        QCOMPARE(cache, (velto::VeltoHyphenGlyphCache{{u"LinLibertineO"_s, {hyphen}}}));

        // Once an entry exists the font is not asked again: the cache's answer stands.
        velto::VeltoHyphenGlyphCache seeded{{u"LiberationSerif"_s, {4242}}};
        QVERIFY(velto::isHyphenationGlyph(QFont(Liberation), 4242, seeded));
        QVERIFY(!velto::isHyphenationGlyph(QFont(Liberation), 16, seeded));

        // A font without hyphens gets an empty entry.
        velto::VeltoHyphenGlyphCache initials;
        QVERIFY(!velto::isHyphenationGlyph(QFont(u"Linux Libertine Initials O"_s), 0, initials));
        QCOMPARE(initials.size(), 1);
        QVERIFY(initials.begin()->isEmpty());
    }

    void fontsCoveringACharacter()
    {
        const QList<QFont> covering = velto::fontsCoveringCharacter(U'A', 11);
        const QStringList families = QFontDatabase::families();
        qsizetype previous = -1;
        for (const QFont &font : covering) {
            QVERIFY2(families.indexOf(font.family()) > previous, qPrintable(font.family())); // in the list's order
            previous = families.indexOf(font.family());
            QCOMPARE(font.pointSizeF(), 11.0);
        }
        QVERIFY(covering.size() >= 3);
        QCOMPARE(velto::fontCoveringCharacter(U'A', 11)->family(), covering.first().family());

        QVERIFY(velto::fontsCoveringCharacter(U'\U0010FFFD', 11).isEmpty()); // private use: nobody
        QVERIFY(!velto::fontCoveringCharacter(U'\U0010FFFD', 11));
        QCOMPARE(velto::fontCoveringCharacter(U'A', 11, u"LiberationSerif"_s)->family(), Liberation);
        const std::optional<QFont> bishop = velto::fontCoveringCharacter(U'\u2657', 11, u"LiberationSerif"_s);
        QVERIFY(bishop && bishop->family() != Liberation); // Liberation has no chess pieces
        QVERIFY(velto::glyphsForCharactersInString(*bishop, u"\u2657"_s, VeltoMakeRange(0, 1)).at(0) != 0);
    }

private:
    // docs/images/font-small-capitals.png: the same line without and with the small-capitals setting,
    // and a font that refuses it.
    void writeSample()
    {
        QImage image(760, 170, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        const QString line = u"Small Capitals in Linux Libertine, 2024"_s;
        const VeltoFont plain(QFont(Libertine, 20));
        const VeltoFont refusing(QFont(Liberation, 20));
        painter.drawGlyphRun(QPointF(16, 44), plain.glyphRunForString(line));
        painter.drawGlyphRun(QPointF(16, 94), plain.fontByAddingChangeCaseFontFeature(3)->glyphRunForString(line));
        const bool refused = !refusing.fontByAddingChangeCaseFontFeature(3);
        painter.drawGlyphRun(QPointF(16, 144), refusing.glyphRunForString(
            refused ? u"Liberation Serif: small capitals refused"_s : u"Liberation Serif: accepted?"_s));
        painter.end();
        QVERIFY(QDir().mkpath(QStringLiteral(VELTO_IMAGES_DIR)));
        QVERIFY(image.save(QStringLiteral(VELTO_IMAGES_DIR "/font-small-capitals.png")));
    }
};

QTEST_MAIN(FontTest)
#include "fonttest.moc"
