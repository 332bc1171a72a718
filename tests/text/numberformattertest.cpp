// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoNumbers.h"
#include "VTDecimalTrimming_p.h"
#include "VeltoNumberFormatter.h"

#include <QTest>

using namespace Qt::StringLiterals;

// The decimal separator is fixed at its first use in a process: this program chooses a comma locale
// (German) before anything asks for it. datesdefaultstest covers the "." locale in its own process.
class NumberFormatterTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        VeltoFormatter::setDefaultVeltoLocale(german);
    }

    void decimalTrimmingOfText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<quint64>("digits");
        QTest::addColumn<QString>("expected");

        auto row = [](const char *name, const QString &text, quint64 m, const QString &expected,
                      const QString &separator = u"."_s) {
            QTest::newRow(name) << text << separator << m << expected;
        };
        row("1.237, m 2: rounds up at 7", u"1.237"_s, 2, u"1.24"_s);
        row("1.2300, m 2: excess zeros cut", u"1.2300"_s, 2, u"1.23"_s);
        row("1.2000, m 2: kept zero dropped", u"1.2000"_s, 2, u"1.2"_s);
        row("1.0000, m 2: separator goes too", u"1.0000"_s, 2, u"1"_s);
        row("1.297, m 2: carry drops the 9", u"1.297"_s, 2, u"1.3"_s);
        row("1.236, m 2: 6 does not round", u"1.236"_s, 2, u"1.23"_s);
        row("99.997, m 2: carry past the start", u"99.997"_s, 2, u"100.0"_s);
        row("0.97, m 1", u"0.97"_s, 1, u"1.0"_s);
        row("9.97, m 1", u"9.97"_s, 1, u"10.0"_s);
        row("-9.97, m 1: through the sign", u"-9.97"_s, 1, u"-10.0"_s);
        row("1.0007, m 3: zero run, no rounding", u"1.0007"_s, 3, u"1"_s);
        row("1.2070, m 2: zero run swallows the 7", u"1.2070"_s, 2, u"1.2"_s);
        row("1.235, m 2: 5 does not round", u"1.235"_s, 2, u"1.23"_s);
        row("m 0 unchanged", u"1.237"_s, 0, u"1.237"_s);
        row("no separator unchanged", u"1237"_s, 2, u"1237"_s);
        row("nothing after the separator", u"12."_s, 2, u"12."_s);
        row("fewer digits than m", u"1.5"_s, 3, u"1.5"_s);
        row("unit kept", u"1.0000 cm"_s, 2, u"1 cm"_s);
        row("grouping passed over", u"1,999.97"_s, 1, u"2,000.0"_s);
        row("comma separator", u"1,237"_s, 2, u"1,24"_s, u","_s);
    }

    void decimalTrimmingOfText()
    {
        QFETCH(QString, text);
        QFETCH(QString, separator);
        QFETCH(quint64, digits);
        QTEST(VTDecimalTrimming::trimmedText(text, separator, digits), "expected");
    }

    void formatterTrimsItsOwnText_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<quint64>("digits");
        QTest::addColumn<QString>("expected");

        QTest::newRow("1.237, m 2") << english << QVariant(1.237) << quint64(2) << u"1.24"_s;
        QTest::newRow("m 0: half-even tie down") << english << QVariant(0.12345) << quint64(0) << u"0.1234"_s;
        QTest::newRow("m 0: half-even tie up") << english << QVariant(0.12355) << quint64(0) << u"0.1236"_s;
        QTest::newRow("grouped base text") << english << QVariant(1234567.8999) << quint64(2) << u"1,234,567.9"_s;
        QTest::newRow("German separator") << german << QVariant(1.237) << quint64(2) << u"1,24"_s;
        QTest::newRow("whole qint64 exact") << german << QVariant(Q_INT64_C(-9007199254740993)) << quint64(2)
                                            << u"-9.007.199.254.740.993"_s;
    }

    void formatterTrimsItsOwnText()
    {
        QFETCH(QLocale, locale);
        QFETCH(QVariant, value);
        QFETCH(quint64, digits);
        QFETCH(QString, expected);
        VeltoNumberFormatter f(QString(), true);
        f.setLocale(locale);
        f.setMaximumFractionDigits(4);
        f.setMaximumDecimalDigitsVelto(digits);
        QCOMPARE(f.stringForObjectValue(value), expected);
        QCOMPARE(f.stringFromNumber(value), expected);
    }

    void unitSuffixesAndZero()
    {
        // Made in the override's locale (German).
        VeltoNumberFormatter cm(u"cm"_s, true);
        QCOMPARE(cm.locale(), german);
        QCOMPARE(cm.stringForObjectValue(0), u"0 cm"_s);
        QCOMPARE(cm.stringForObjectValue(2.5), u"2,5 cm"_s);
        QCOMPARE(cm.stringForObjectValue(-1234.5), u"-1.234,5 cm"_s);
        QCOMPARE(cm.stringWithoutVeltoUnitNameFromNumber(2.5), u"2,5"_s);
        QCOMPARE(cm.stringWithoutVeltoUnitNameFromNumber(0), u"0"_s);
        QVERIFY(cm.stringForObjectValue(u"5"_s).isNull());

        VeltoNumberFormatter whole(u"px"_s, false);
        QCOMPARE(whole.numberStyle(), VeltoNumberFormatter::NumberStyle::NoStyle);
        QCOMPARE(whole.stringForObjectValue(2.5), u"2 px"_s); // half to even
        QCOMPARE(whole.stringForObjectValue(1234567), u"1234567 px"_s);

        cm.setSuffixesForVeltoUnitName(QString());
        QCOMPARE(cm.zeroSymbol(), u"0"_s);
        QCOMPARE(cm.stringForObjectValue(5), u"5"_s);
        QCOMPARE(cm.stringWithoutVeltoUnitNameFromNumber(5), u"5"_s);
    }

    void parsing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QVariant>("expected"); // invalid: the text is refused

        QTest::newRow("with unit") << u"12 cm"_s << QVariant(Q_INT64_C(12));
        QTest::newRow("12cm: lenient") << u"12cm"_s << QVariant(Q_INT64_C(12));
        QTest::newRow("negative, lenient") << u"-12cm"_s << QVariant(Q_INT64_C(-12));
        QTest::newRow("decimal") << u"2,5 cm"_s << QVariant(2.5);
        QTest::newRow("grouped") << u"1.234,5 cm"_s << QVariant(1234.5);
        QTest::newRow("zero symbol") << u"0 cm"_s << QVariant(Q_INT64_C(0));
        QTest::newRow("suffix required") << u"12"_s << QVariant();
        QTest::newRow("other unit") << u"12 mm"_s << QVariant();
        QTest::newRow("trailing text") << u"12 cm x"_s << QVariant();
        QTest::newRow("dangling group separator") << u"12. cm"_s << QVariant();
        QTest::newRow("two separators") << u"1,2,3 cm"_s << QVariant();
        QTest::newRow("exponent") << u"1e3 cm"_s << QVariant();
        QTest::newRow("empty") << QString() << QVariant();
    }

    void parsing()
    {
        QFETCH(QString, text);
        QFETCH(QVariant, expected);
        VeltoNumberFormatter cm(u"cm"_s, true);
        QVariant value = u"untouched"_s;
        QString error;
        const bool ok = cm.getObjectValue(&value, text, &error);
        QCOMPARE(ok, expected.isValid());
        if (ok) {
            QCOMPARE(value.typeId(), expected.typeId());
            QCOMPARE(value, expected);
            QVERIFY(error.isNull());
        } else {
            QCOMPARE(value, QVariant(u"untouched"_s));
            QCOMPARE(error, u"Invalid number"_s);
        }
    }

    void archivingAndCopying()
    {
        VeltoNumberFormatter original(u"pt"_s, true);
        original.setLocale(english);
        original.setMaximumDecimalDigitsVelto(1);

        QVariantMap archive;
        original.encodeWithCoder(archive);
        QCOMPARE(archive.value(u"veltoDigits"_s), QVariant(Q_INT64_C(1)));
        const VeltoNumberFormatter restored = VeltoNumberFormatter::initWithCoder(archive);
        QCOMPARE(restored.maximumDecimalDigitsVelto(), quint64(1));
        QCOMPARE(restored.stringForObjectValue(9.97), u"10.0 pt"_s);

        // Restored only when present: without the key the default (no trimming) stays.
        archive.remove(u"veltoDigits"_s);
        QCOMPARE(VeltoNumberFormatter::initWithCoder(archive).maximumDecimalDigitsVelto(), quint64(0));
        QCOMPARE(VeltoNumberFormatter::initWithCoder({}).positiveSuffix(), QString());

        VeltoNumberFormatter copy = original;
        QCOMPARE(copy.maximumDecimalDigitsVelto(), quint64(1));
        copy.setMaximumDecimalDigitsVelto(3);
        copy.setSuffixesForVeltoUnitName(u"mm"_s);
        QCOMPARE(original.maximumDecimalDigitsVelto(), quint64(1));
        QCOMPARE(original.stringForObjectValue(1.25), u"1.2 pt"_s);
    }

    void stringWithVeltoFloat_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<quint64>("decimals");
        QTest::addColumn<QString>("expected");

        QTest::newRow("2.5, 3") << 2.5 << quint64(3) << u"2,5"_s;
        QTest::newRow("2.0, 3") << 2.0 << quint64(3) << u"2"_s;
        QTest::newRow("1.239, 2: cut, not rounded") << 1.239 << quint64(2) << u"1,23"_s;
        QTest::newRow("0 decimals") << 1.5 << quint64(0) << u"1"_s;
        QTest::newRow("more than six") << 0.125 << quint64(20) << u"0,125"_s;
        QTest::newRow("negative") << -3.1 << quint64(1) << u"-3,1"_s;
        QTest::newRow("no point") << qInf() << quint64(2) << u"inf"_s;
    }

    void stringWithVeltoFloat()
    {
        QFETCH(double, value);
        QFETCH(quint64, decimals);
        QTEST(velto::stringWithVeltoFloat(value, decimals), "expected");
    }

    void decimalSeparatorIsFixedAtFirstUse()
    {
        QCOMPARE(velto::stringWithVeltoFloat(2.5), u"2.500000"_s);
        QCOMPARE(VeltoNumberFormatter::localizedDecimalSeparatorVelto(), u","_s);
        VeltoFormatter::setDefaultVeltoLocale(english);
        QCOMPARE(VeltoNumberFormatter::localizedDecimalSeparatorVelto(), u","_s);
        QCOMPARE(velto::stringWithVeltoFloat(2.5, 1), u"2,5"_s);
        VeltoFormatter::setDefaultVeltoLocale(german);
    }

private:
    const QLocale german{QLocale::German, QLocale::Germany};
    const QLocale english{QLocale::English, QLocale::UnitedStates};
};

QTEST_GUILESS_MAIN(NumberFormatterTest)
#include "numberformattertest.moc"
