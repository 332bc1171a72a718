// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "DateTime+VeltoAdditions.h"
#include "UserDefaults+VeltoAdditions.h"
#include "VeltoDateFormatter.h"
#include "VeltoNumberFormatter.h"

#include <QTemporaryDir>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

// The decimal separator is fixed at its first use in a process: this program runs in the C locale
// (set in initTestCase, before anything asks), whose separator is ".". numberformattertest covers ",".
class DatesDefaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QLocale::setDefault(QLocale::c());
        QVERIFY(folder.isValid());
    }

    void localeOverride()
    {
        QVERIFY(!VeltoFormatter::defaultVeltoLocale());
        QCOMPARE(VeltoFormatter::currentLocaleVelto(), QLocale());

        const QLocale german(QLocale::German, QLocale::Germany);
        VeltoFormatter::setDefaultVeltoLocale(german);
        QCOMPARE(VeltoFormatter::defaultVeltoLocale(), german);
        QCOMPARE(VeltoFormatter::currentLocaleVelto(), german);
        QCOMPARE(VeltoNumberFormatter(u"cm"_s, true).locale(), german);
        const VeltoDateFormatter months = VeltoDateFormatter::dateFormatterWithFormat(u"MMMM"_s);
        QCOMPARE(months.locale(), german);
        QCOMPARE(months.stringFromDate(QDateTime(QDate(2024, 3, 15), QTime(12, 0))), u"März"_s);
        // A formatter made directly keeps the user's locale.
        QCOMPARE(VeltoDateFormatter(u"MMMM"_s).stringFromDate(QDateTime(QDate(2024, 3, 15), QTime(12, 0))), u"March"_s);

        VeltoFormatter::setDefaultVeltoLocale(std::nullopt);
        QVERIFY(!VeltoFormatter::defaultVeltoLocale());
        QCOMPARE(VeltoNumberFormatter().locale(), QLocale());
    }

    void decimalSeparatorIsNullForAPoint()
    {
        QVERIFY(VeltoNumberFormatter::localizedDecimalSeparatorVelto().isNull());
        VeltoFormatter::setDefaultVeltoLocale(QLocale(QLocale::German, QLocale::Germany));
        QVERIFY(VeltoNumberFormatter::localizedDecimalSeparatorVelto().isNull()); // never refreshed
        VeltoFormatter::setDefaultVeltoLocale(std::nullopt);
    }

    void ticks_data()
    {
        QTest::addColumn<double>("seconds");
        QTest::addColumn<qint64>("ticks");
        QTest::newRow("1.0") << 1.0 << qint64(60);
        QTest::newRow("0.99 truncates") << 0.99 << qint64(59);
        QTest::newRow("-0.99 toward zero") << -0.99 << qint64(-59);
        QTest::newRow("NaN") << qQNaN() << qint64(0);
        QTest::newRow("beyond qint64") << 1e300 << std::numeric_limits<qint64>::max();
    }

    void ticks()
    {
        QFETCH(double, seconds);
        QTEST(velto::tickCountForSeconds(seconds), "ticks");
        QCOMPARE(velto::secondsForTickCount(90), 1.5);
        QCOMPARE(velto::secondsForTickCount(std::numeric_limits<quint32>::max()), 71582788.25);
    }

    // The additions forward to VeltoDate (versiontest covers the calendar arithmetic): each is checked to
    // reach it with its own fields.
    void gregorianComponents()
    {
        const QTimeZone berlin("Europe/Berlin");
        const VeltoDateComponents parts = velto::dateComponentsVeltoWithYear(2024, 7, 1, 14, 30, 5, berlin);
        QCOMPARE(parts, (VeltoDateComponents{2024, 7, 1, 14, 30, 5, berlin}));
        QCOMPARE(velto::dateWithGregorianVeltoYear(2024, 7, 1, 14, 30, 5, berlin),
                 QDateTime(QDate(2024, 7, 1), QTime(12, 30, 5), QTimeZone::utc()));
        QCOMPARE(velto::dateWithGregorianVeltoYear(2023, 2, 29), QDateTime(QDate(2023, 3, 1), QTime(0, 0)));
        QVERIFY(!velto::dateWithGregorianVeltoComponents(std::nullopt).isValid());
        const QDateTime moment(QDate(1999, 12, 31), QTime(23, 59, 58));
        QCOMPARE(velto::dateWithGregorianVeltoComponents(velto::componentsInGregorianCalendarVelto(moment)), moment);
        const QDateTime before = QDateTime::currentDateTime().addSecs(-2);
        QVERIFY(velto::dateWithGregorianVeltoComponents(velto::nowGregorianVelto()) >= before);
    }

    void plistTextReadsBackToTheSameInstant_data()
    {
        QTest::addColumn<QByteArray>("zone");
        QTest::addColumn<QDateTime>("instant");
        QTest::addColumn<QString>("text");
        const QDateTime summer(QDate(2024, 7, 1), QTime(12, 0), QTimeZone::utc());
        const QDateTime winter(QDate(2024, 1, 1), QTime(12, 0, 59), QTimeZone::utc());
        QTest::newRow("UTC") << QByteArray("UTC") << summer << u"2024-07-01 12:00:00 UTC"_s;
        QTest::newRow("Berlin summer") << QByteArray("Europe/Berlin") << summer << u"2024-07-01 14:00:00 GMT+2"_s;
        QTest::newRow("Berlin winter") << QByteArray("Europe/Berlin") << winter << u"2024-01-01 13:00:59 GMT+1"_s;
        QTest::newRow("New York summer") << QByteArray("America/New_York") << summer << u"2024-07-01 08:00:00 EDT"_s;
        QTest::newRow("New York winter") << QByteArray("America/New_York") << winter << u"2024-01-01 07:00:59 EST"_s;
        QTest::newRow("Kolkata") << QByteArray("Asia/Kolkata") << summer << u"2024-07-01 17:30:00 GMT+5:30"_s;
        QTest::newRow("year 1000: no Julian switch") << QByteArray("UTC")
                                                     << QDateTime(QDate(1000, 1, 1), QTime(0, 0), QTimeZone::utc())
                                                     << u"1000-01-01 00:00:00 UTC"_s;
    }

    void plistTextReadsBackToTheSameInstant()
    {
        QFETCH(QByteArray, zone);
        QFETCH(QDateTime, instant);
        QFETCH(QString, text);
        const QTimeZone timeZone(zone);
        QVERIFY(timeZone.isValid());
        const VeltoDateFormatter writer(velto::PlistDatePattern, QLocale::c(), timeZone);
        QCOMPARE(writer.stringFromDate(instant), text);
        QCOMPARE(writer.dateFromString(text), instant);
        // Read back by the plist reader (system zone) and by a reader in another zone: the same instant.
        QCOMPARE(velto::dateWithStringValueFromPlistVelto(text), instant);
        QCOMPARE(VeltoDateFormatter(velto::PlistDatePattern, QLocale::c(), QTimeZone("Asia/Tokyo")).dateFromString(text),
                 instant);
    }

    void plistTextInTheSystemZone()
    {
        const QDateTime instant(QDate(2024, 3, 31), QTime(0, 59, 59), QTimeZone::utc());
        const QString text = velto::stringValueForPlistVelto(instant);
        QCOMPARE(text, VeltoDateFormatter(velto::PlistDatePattern, QLocale::c()).stringFromDate(instant));
        QCOMPARE(velto::dateWithStringValueFromPlistVelto(text), instant);
        QVERIFY(velto::stringValueForPlistVelto(QDateTime()).isNull());
        // The Gregorian calendar whatever the locale's own (Thai counts Buddhist years).
        QCOMPARE(VeltoDateFormatter(u"yyyy"_s, QLocale(QLocale::Thai, QLocale::Thailand)).stringFromDate(instant),
                 u"2024"_s);

        // The reader keeps the user's locale even under an override, so German zone names do not read (kept).
        const QString german = u"2024-07-01 14:00:00 MESZ"_s;
        const QDateTime berlinTwoPm(QDate(2024, 7, 1), QTime(14, 0), QTimeZone("Europe/Berlin"));
        QCOMPARE(VeltoDateFormatter(velto::PlistDatePattern, QLocale(QLocale::German, QLocale::Germany),
                                    QTimeZone("Europe/Berlin"))
                     .dateFromString(german),
                 berlinTwoPm);
        VeltoFormatter::setDefaultVeltoLocale(QLocale(QLocale::German, QLocale::Germany));
        QVERIFY(!velto::dateWithStringValueFromPlistVelto(german).isValid());
        VeltoFormatter::setDefaultVeltoLocale(std::nullopt);
    }

    void unreadablePlistTextGivesNoDate_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << u""_s;
        QTest::newRow("garbage") << u"yesterday"_s;
        QTest::newRow("no zone") << u"2024-07-01 12:00:00"_s;
        QTest::newRow("trailing text") << u"2024-07-01 12:00:00 UTC and more"_s;
        QTest::newRow("month 13") << u"2024-13-01 12:00:00 UTC"_s;
    }

    void unreadablePlistTextGivesNoDate()
    {
        QFETCH(QString, text);
        QVERIFY(!velto::dateWithStringValueFromPlistVelto(text).isValid());
        QVariant value;
        QString error;
        QVERIFY(!VeltoDateFormatter(velto::PlistDatePattern).getObjectValue(&value, text, &error));
        QCOMPARE(error, u"Invalid date"_s);
    }

    void typedReads_data()
    {
        QTest::addColumn<QVariant>("stored"); // invalid: nothing stored
        QTest::addColumn<qint64>("integer");
        QTest::addColumn<float>("real");
        QTest::addColumn<bool>("boolean");
        QTest::newRow("nothing: the defaults") << QVariant() << qint64(-1) << -1.5f << true;
        QTest::newRow("whole number") << QVariant(42) << qint64(42) << 42.0f << true;
        QTest::newRow("real number") << QVariant(2.9) << qint64(2) << 2.9f << true;
        QTest::newRow("numeric text") << QVariant(u" -3 "_s) << qint64(-3) << -3.0f << true;
        QTest::newRow("real text") << QVariant(u"2.5"_s) << qint64(2) << 2.5f << true;
        QTest::newRow("YES") << QVariant(u"YES"_s) << qint64(0) << 0.0f << true;
        QTest::newRow("other text") << QVariant(u"abc"_s) << qint64(0) << 0.0f << false;
        QTest::newRow("true") << QVariant(true) << qint64(1) << 1.0f << true;
        QTest::newRow("false") << QVariant(false) << qint64(0) << 0.0f << false;
        QTest::newRow("list") << QVariant(QVariantList{1}) << qint64(0) << 0.0f << false;
    }

    void typedReads()
    {
        QFETCH(QVariant, stored);
        QFETCH(qint64, integer);
        VeltoUserDefaults defaults(folder.filePath(u"typed.plist"_s));
        const QString key = u"value"_s;
        QVERIFY(defaults.setObject(stored, key));
        QCOMPARE(velto::integerForKey(defaults, key, -1), integer);
        QTEST(velto::floatForKey(defaults, key, -1.5f), "real");
        QTEST(velto::boolForKey(defaults, key, true), "boolean");
        QCOMPARE(velto::objectForKey(defaults, key, u"default"_s), stored.isValid() ? stored : QVariant(u"default"_s));
    }

    void datesInTheDefaults()
    {
        VeltoUserDefaults defaults(folder.filePath(u"dates.plist"_s));
        const QString key = u"lastCheck"_s;
        const QDateTime moment(QDate(2024, 11, 3), QTime(6, 30, 0), QTimeZone::utc());
        QVERIFY(velto::setDateVelto(defaults, moment, key));
        QCOMPARE(defaults.objectForKey(key), QVariant(velto::stringValueForPlistVelto(moment)));
        QCOMPARE(velto::dateForKeyVelto(defaults, key), moment);
        QCOMPARE(velto::dateForKeyVelto(VeltoUserDefaults(defaults.filePath()), key), moment);

        QVERIFY(velto::setDateVelto(defaults, QDateTime(), key));
        QVERIFY(!defaults.objectForKey(key).isValid());
        QVERIFY(!velto::dateForKeyVelto(defaults, key).isValid());

        QVERIFY(defaults.setObject(u"not a date"_s, key));
        QVERIFY(!velto::dateForKeyVelto(defaults, key).isValid());
        QVERIFY(defaults.setObject(12, key));
        QVERIFY(!velto::dateForKeyVelto(defaults, key).isValid());

        // A registered default counts as a value.
        defaults.registerDefaults({{u"registered"_s, 7}});
        QCOMPARE(velto::integerForKey(defaults, u"registered"_s, -1), 7);
    }

private:
    QTemporaryDir folder;
};

QTEST_GUILESS_MAIN(DatesDefaultsTest)
#include "datesdefaultstest.moc"
