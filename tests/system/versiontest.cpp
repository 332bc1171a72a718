// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDate.h"
#include "VeltoVersion.h"
#include "veltotest.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// Major, minor, revision, release type and increment.
using Fields = QList<int>;

Fields fieldsOf(const VeltoVersion &v)
{
    return {v.majorVersion(), v.minorVersion(), v.revision(), int(v.releaseType()), v.releaseIncrement()};
}

// An independent description of the display-string grammar: numbers 0-99 without leading zeros, each
// followed by the end or one non-digit, an optional release word with one space and its increment.
const QRegularExpression &displayGrammar()
{
    static const QRegularExpression grammar([] {
        const QString n = u"(0|[1-9][0-9]?)(?![0-9])"_s;
        const QString sep = u"(?:$|[^0-9])"_s;
        return u"^%1%2(?:%1%2(?:%1%2)?)?(?:$|(?i:(alpha|beta|fc)) %1(?:$|[^0-9][\\s\\S]*))$"_s.arg(n, sep);
    }());
    return grammar;
}

std::optional<Fields> modelParse(const QString &text)
{
    const QRegularExpressionMatch match = displayGrammar().match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    const QString word = match.captured(4).toLower();
    const int type = word.isEmpty() ? 4 : (word == u"alpha" ? 1 : (word == u"beta" ? 2 : 3));
    return Fields{match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt(), type,
                  word.isEmpty() ? 1 : match.captured(5).toInt()};
}

const QStringList tokens = {u"0"_s, u"1"_s, u"7"_s, u"10"_s, u"99"_s, u"100"_s, u"01"_s, u"."_s, u"."_s, u" "_s,
                            u" "_s, u"beta"_s, u"Beta"_s, u"alpha"_s, u"FC"_s, u"release"_s, u"x"_s, u"\n"_s,
                            u"\t"_s, u"\u0661"_s};

} // namespace

class VersionTest : public QObject
{
    Q_OBJECT

private slots:
    void parseDisplayStringKeepsTheTrimmedText()
    {
        VeltoError error;
        const std::optional<VeltoVersion> version = VeltoVersion::initWithDisplayString(u"  1.2 beta 3\n"_s, &error);
        QVERIFY(version && error.isNull());
        QCOMPARE(fieldsOf(*version), (Fields{1, 2, 0, 2, 3}));
        QCOMPARE(version->displayString(), u"1.2 beta 3"_s);
        QCOMPARE(version->bundleVersionStringIvar(), QString());

        QVERIFY(!VeltoVersion::initWithDisplayString(u"01.2"_s, &error));
        QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorVersionString));
        QCOMPARE(error.localizedDescription(), u"invalid display version string"_s);
    }

    void displayStringParsingMatchesTheGrammar()
    {
        VeltoTestRandom random(6);
        int accepted = 0;
        for (int round = 0; round < 30000; ++round) {
            QString text = QString::number(random.bounded(0, 120));
            for (int count = random.bounded(0, 8); count > 0; --count)
                text += tokens.at(random.bounded(int(tokens.size())));
            const std::optional<VeltoVersion> parsed = VeltoVersion::initWithDisplayString(text);
            const std::optional<Fields> expected = modelParse(text);
            QVERIFY2(parsed.has_value() == expected.has_value(), qPrintable(text));
            if (parsed) {
                ++accepted;
                QCOMPARE(fieldsOf(*parsed), *expected);
            }
        }
        QVERIFY(accepted > 1000); // the tokens make valid strings often enough to test both sides
    }

    void parseBundleVersionString_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("errorText");
        QTest::addColumn<QString>("display");

        QTest::newRow("beta") << u"0201.0002.03"_s << QString() << u"2.1 beta 3"_s;
        QTest::newRow("release") << u"0201.0304.01"_s << QString() << u"2.1.3"_s;
        QTest::newRow("unknown type 05 is read as 0") << u"0102.0305.01"_s << QString() << u"1.2.3 ??? 1"_s;
        QTest::newRow("eleven units") << u"0201.0002.0"_s << u"bundle version string is wrong length"_s << QString();
        QTest::newRow("no full stop at 4") << u"0201-0002.03"_s << u"invalid bundle version string"_s << QString();
        QTest::newRow("letter in a field") << u"02a1.0002.03"_s << u"invalid bundle version string"_s << QString();
        QTest::newRow("arabic-indic digit") << u"0201.0002.0\u0663"_s << u"invalid bundle version string"_s << QString();
    }

    void parseBundleVersionString()
    {
        QFETCH(QString, text);
        QFETCH(QString, errorText);
        QFETCH(QString, display);

        VeltoError error;
        const std::optional<VeltoVersion> version = VeltoVersion::initWithBundleVersionString(text, &error);
        if (!errorText.isNull()) {
            QVERIFY(!version);
            QVERIFY(error.isErrorDomainVelto(VeltoCoreErrorDomain, VeltoCoreErrorVersionString));
            QCOMPARE(error.localizedDescription(), errorText);
            return;
        }
        QVERIFY(version);
        QCOMPARE(version->bundleVersionString(), text);
        QCOMPARE(version->displayString(), display);
        QCOMPARE(version->displayStringIvar(), display);
    }

    void buildDisplayAndBundleStrings_data()
    {
        QTest::addColumn<VeltoVersion>("version");
        QTest::addColumn<QString>("display");
        QTest::addColumn<QString>("bundle");

        QTest::newRow("release") << VeltoVersion(5, 0, 0) << u"5.0"_s << u"0500.0004.01"_s;
        QTest::newRow("release shows no increment") << VeltoVersion(2, 0, 0, VeltoReleaseType::Release, 7) << u"2.0"_s
                                                    << u"0200.0004.07"_s;
        QTest::newRow("beta") << VeltoVersion(2, 1, 0, VeltoReleaseType::Beta, 3) << u"2.1 beta 3"_s << u"0201.0002.03"_s;
        QTest::newRow("fc") << VeltoVersion(99, 99, 99, VeltoReleaseType::FinalCandidate, 99) << u"99.99.99 fc 99"_s
                            << u"9999.9903.99"_s;
        QTest::newRow("unknown") << VeltoVersion(1, 0, 0, VeltoReleaseType::Unknown, 2) << u"1.0 ??? 2"_s
                                 << u"0100.0000.02"_s;
        QTest::newRow("default") << VeltoVersion() << u"0.0 ??? 0"_s << u"0000.0000.00"_s;
    }

    void buildDisplayAndBundleStrings()
    {
        QFETCH(VeltoVersion, version);
        QFETCH(QString, display);
        QFETCH(QString, bundle);
        QCOMPARE(version.displayStringIvar(), QString());
        QCOMPARE(version.displayString(), display);
        QCOMPARE(version.displayStringIvar(), display);
        QCOMPARE(version.bundleVersionString(), bundle);
    }

    void everyValidVersionRoundTrips()
    {
        // Every value of every field, with the other fields drawn at random.
        VeltoTestRandom random(9);
        for (int i = 0; i < 10000; ++i) {
            const auto type = VeltoReleaseType(random.bounded(1, 5));
            const quint64 increment = type == VeltoReleaseType::Release ? 1 : quint64(i % 7 == 0 ? random.bounded(100) : i % 100);
            const VeltoVersion version(i % 100, (i / 100) % 100, random.bounded(100), type, increment);
            const auto fromDisplay = VeltoVersion::initWithDisplayString(version.displayString());
            QVERIFY2(fromDisplay && *fromDisplay == version, qPrintable(version.displayString()));
            const auto fromBundle = VeltoVersion::initWithBundleVersionString(version.bundleVersionString());
            QVERIFY2(fromBundle && *fromBundle == version, qPrintable(version.bundleVersionString()));
            QCOMPARE(fromBundle->displayString(), version.displayString());
        }
    }

    void textsGivenOutSurviveSetters()
    {
        auto parsed = VeltoVersion::initWithDisplayString(u"1.2 Beta 3"_s);
        QVERIFY(parsed);
        parsed->setMajorVersion(7);
        parsed->setReleaseType(VeltoReleaseType::Release);
        QCOMPARE(parsed->displayString(), u"1.2 Beta 3"_s);
        QCOMPARE(parsed->orderedInteger(), VeltoVersion(7, 2, 0, VeltoReleaseType::Release, 3).orderedInteger());

        VeltoVersion built(4, 0, 0);
        QCOMPARE(built.displayString(), u"4.0"_s);
        QCOMPARE(built.bundleVersionString(), u"0400.0004.01"_s);
        const VeltoVersion copyAfterReading = built;
        built.setMinorVersion(5);
        QCOMPARE(built.displayString(), u"4.0"_s); // given out before the change
        QCOMPARE(built.bundleVersionString(), u"0400.0004.01"_s);
        VeltoVersion laterCopy = copyAfterReading;
        laterCopy.setRevision(9);
        QCOMPARE(laterCopy.displayString(), u"4.0"_s);

        VeltoVersion fresh(4, 0, 0);
        const VeltoVersion sharer = fresh;
        fresh.setRevision(2);
        QCOMPARE(fresh.displayString(), u"4.0.2"_s); // made on first request, from the fields then
        QCOMPARE(fresh.bundleVersionString(), u"0400.0204.01"_s);
        QCOMPARE(sharer.displayString(), u"4.0"_s);
    }

    void numbersOutsideTheirRangeAreRefused()
    {
        const auto reason = [](const char *field, int value) {
            return u"VeltoVersion: %1 %2 is outside 0-99"_s.arg(QLatin1StringView(field)).arg(value);
        };
        VELTO_COMPARE_THROWN(VeltoVersion(100, 0, 0), VeltoInvalidArgumentException, reason("major version", 100));
        VELTO_COMPARE_THROWN(VeltoVersion(1, 256, 0), VeltoInvalidArgumentException, reason("minor version", 256));
        VELTO_COMPARE_THROWN(VeltoVersion(1, 0, 0x101), VeltoInvalidArgumentException, reason("revision", 257));
        VELTO_COMPARE_THROWN(VeltoVersion(1, 0, 0, VeltoReleaseType::Beta, 300), VeltoInvalidArgumentException,
                             reason("release increment", 300));
        VeltoVersion version(1, 2, 3, VeltoReleaseType::Beta, 4);
        VELTO_COMPARE_THROWN(version.setReleaseIncrement(100), VeltoInvalidArgumentException,
                             reason("release increment", 100));
        VELTO_COMPARE_THROWN(version.setMajorVersion(256), VeltoInvalidArgumentException, reason("major version", 256));
        QCOMPARE(fieldsOf(version), (Fields{1, 2, 3, 2, 4})); // refused values change nothing
        version.setRevision(99);
        QCOMPARE(version.revision(), 99);

        QVERIFY(version.setReleaseTypeFromInteger(3));
        QCOMPARE(version.releaseType(), VeltoReleaseType::FinalCandidate);
        QVERIFY(!version.setReleaseTypeFromInteger(5));
        QCOMPARE(version.releaseType(), VeltoReleaseType::Unknown);
        QVERIFY(!version.setReleaseTypeFromInteger(-1));
    }

    void ordering()
    {
        const auto v = [](const char *text) { return *VeltoVersion::initWithDisplayString(QString::fromLatin1(text)); };
        QCOMPARE(v("1.0 fc 2").compareVersion(v("1.0")), -1);
        QCOMPARE(v("2.0").compareVersion(VeltoVersion(2, 0, 0, VeltoReleaseType::Release, 2)), -1);
        QCOMPARE(v("2.0").compareVersion(*VeltoVersion::initWithBundleVersionString(u"0200.0004.01"_s)), 0);
        QVERIFY(v("1.9.9") < v("2.0 alpha 0") && v("2.0 alpha 0") < v("2.0 beta 0") && v("2.0 beta 0") < v("2.0 fc 0"));
        QCOMPARE(v("2.1.3").orderedInteger(), 0x0201030401ULL);

        // Equal versions are equal however they were written, and hash alike.
        QCOMPARE(v("1.2 BETA 3"), v("1.2 beta 3"));
        QCOMPARE((QSet<VeltoVersion>{v("1.2"), v("1.2.0"), VeltoVersion(1, 2, 0)}).size(), 1);

        const QString description = VeltoVersion(2, 1, 0, VeltoReleaseType::Beta, 3).description();
        QVERIFY2(QRegularExpression(u"^VeltoVersion<0x[0-9a-f]+> - \"2\\.1 beta 3\"$"_s).match(description).hasMatch(),
                 qPrintable(description));
    }

    void datesFromComponentsAndBack()
    {
        // Fields out of range carry over, as calendars do.
        const QTimeZone utc = QTimeZone::utc();
        QCOMPARE(VeltoDate::dateWithYear(2023, 13, 1, 0, 0, 0, utc).date().date(), QDate(2024, 1, 1));
        QCOMPARE(VeltoDate::dateWithYear(2024, 3, 0, 0, 0, 0, utc).date().date(), QDate(2024, 2, 29));
        QCOMPARE(VeltoDate::dateWithYear(2024, 1, 1, -1, 0, 0, utc).date(),
                 QDateTime(QDate(2023, 12, 31), QTime(23, 0), utc));
        QCOMPARE(VeltoDate::dateWithYear(0, 1, 1, 0, 0, 0, utc).date().date(), QDate(-1, 1, 1)); // 1 BC
        QVERIFY(VeltoDate::dateWithYear(2024, 1, 1'000'000'000).date().isNull());

        // Components keep their time zone; without one they are read in the default one.
        const QTimeZone berlin("Europe/Berlin");
        QVERIFY(berlin.isValid());
        QCOMPARE(VeltoDate::dateWithYear(2024, 7, 1, 14, 30, 5, berlin).timeZone(), berlin);
        const VeltoDate local = VeltoDate::dateWithYear(2024, 5, 17);
        QCOMPARE(local.date(), QDateTime(QDate(2024, 5, 17), QTime(0, 0), QTimeZone::systemTimeZone()));
        QCOMPARE(local.dateComponents()->timeZone, QTimeZone());
        QVERIFY(!VeltoDate().dateComponents());

        // A date's components are derived in the default time zone, carry it, and give the same moment back.
        const QDateTime moment(QDate(2024, 12, 24), QTime(18, 0), berlin);
        const std::optional<VeltoDate::Components> parts = VeltoDate(moment).dateComponents();
        QVERIFY(parts && parts->timeZone == QTimeZone::systemTimeZone());
        QCOMPARE(VeltoDate(*parts).date(), moment);
    }

    void dateComparisonAndDescription()
    {
        const VeltoDate early = VeltoDate::dateWithYear(2020, 1, 1, 0, 0, 0, QTimeZone::utc());
        const VeltoDate sameMoment(QDateTime(QDate(2020, 1, 1), QTime(1, 0), QTimeZone(3600)));
        QCOMPARE(early.compare(sameMoment), 0);
        QCOMPARE(early.compare(VeltoDate::now()), -1);
        QCOMPARE(VeltoDate::now().compare(early), 1);
        QCOMPARE(VeltoDate().compare(early), -1);
        QCOMPARE(VeltoDate().compare(VeltoDate()), 0);

        const auto matches = [](const QString &pattern, const VeltoDate &date) {
            return QRegularExpression(pattern).match(date.description()).hasMatch();
        };
        QVERIFY(matches(u"^VeltoDate<0x[0-9a-f]+>: 2020-01-01 00:00:00 UTC$"_s, early));
        QVERIFY(matches(u"^VeltoDate<0x[0-9a-f]+>: 2020-01-01 00:00:00 \\+0000$"_s, sameMoment));
        QVERIFY(VeltoDate().description().endsWith(u": (null)"_s));
    }
};

QTEST_APPLESS_MAIN(VersionTest)
#include "versiontest.moc"
