// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "String+VeltoScanning.h"
#include "rangetostring.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

enum Scanner { Hex, Int, Float };

class StringScanningTest : public QObject
{
    Q_OBJECT

private slots:
    void scanAtIndex_data()
    {
        QTest::addColumn<int>("scanner");
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint64>("index");
        QTest::addColumn<double>("value");
        QTest::addColumn<VeltoRange>("used");

        constexpr double dmax = std::numeric_limits<double>::max();
        const QString spaces30(30, u' ');
        QTest::newRow("hex with prefix and whitespace") << int(Hex) << u" \n0x1F;"_s << quint64(0) << 31.0
                                                        << VeltoMakeRange(0, 6);
        QTest::newRow("hex prefix without digits") << int(Hex) << u"0xZ"_s << quint64(0) << 0.0 << VeltoMakeRange(0, 1);
        QTest::newRow("hex clamps") << int(Hex) << u"123456789"_s << quint64(0) << 4294967295.0 << VeltoMakeRange(0, 9);
        QTest::newRow("hex takes no sign") << int(Hex) << u"-1"_s << quint64(0) << 0.0 << VeltoMakeRange(0, 0);
        QTest::newRow("int from an index") << int(Int) << u"line 42: x"_s << quint64(4) << 42.0 << VeltoMakeRange(4, 3);
        QTest::newRow("int clamps high") << int(Int) << u"+99999999999"_s << quint64(0) << 2147483647.0
                                         << VeltoMakeRange(0, 12);
        QTest::newRow("int clamps low") << int(Int) << u"-99999999999"_s << quint64(0) << -2147483648.0
                                        << VeltoMakeRange(0, 12);
        QTest::newRow("nothing scans") << int(Int) << u"  x"_s << quint64(0) << 0.0 << VeltoMakeRange(0, 0);
        QTest::newRow("index past the end") << int(Float) << u"12"_s << quint64(9) << 0.0 << VeltoMakeRange(9, 0);
        QTest::newRow("float with exponent") << int(Float) << u"3.25e2x"_s << quint64(0) << 325.0 << VeltoMakeRange(0, 6);
        QTest::newRow("float without integer part") << int(Float) << u"-.5"_s << quint64(0) << -0.5 << VeltoMakeRange(0, 3);
        QTest::newRow("float trailing point") << int(Float) << u"5.,"_s << quint64(0) << 5.0 << VeltoMakeRange(0, 2);
        QTest::newRow("exponent marker alone") << int(Float) << u"1e+"_s << quint64(0) << 1.0 << VeltoMakeRange(0, 1);
        QTest::newRow("float clamps") << int(Float) << u"-1e400"_s << quint64(0) << -dmax << VeltoMakeRange(0, 6);
        QTest::newRow("float too small is zero") << int(Float) << u"0.0001e-400"_s << quint64(0) << 0.0
                                                 << VeltoMakeRange(0, 11);
        // From 51 units on only a short stretch from the index is scanned.
        QTest::newRow("short text scanned whole") << int(Int) << spaces30 + u"7"_s << quint64(0) << 7.0
                                                  << VeltoMakeRange(0, 31);
        QTest::newRow("long text: int window of 22") << int(Int) << spaces30 + u"7"_s + QString(20, u'x') << quint64(0)
                                                     << 0.0 << VeltoMakeRange(0, 0);
        QTest::newRow("long text: hex window of 11") << int(Hex) << QString(60, u'1') << quint64(5) << 4294967295.0
                                                     << VeltoMakeRange(5, 11);
        QTest::newRow("long text: float window of 47") << int(Float) << u"0."_s + QString(49, u'5') << quint64(0)
                                                       << 0.5555555555555556 << VeltoMakeRange(0, 47);
    }

    void scanAtIndex()
    {
        QFETCH(int, scanner);
        QFETCH(QString, text);
        QFETCH(quint64, index);

        VeltoRange range{1234, 5678};
        double scanned = 0;
        switch (scanner) {
        case Hex:
            scanned = velto::hexIntValueAtIndex(text, index, &range);
            if (index == 0)
                QCOMPARE(velto::hexIntValue(text), quint32(scanned));
            break;
        case Int:
            scanned = velto::intValueAtIndex(text, index, &range);
            break;
        default:
            scanned = velto::floatValueAtIndex(text, index, &range);
        }
        QTEST(scanned, "value");
        QTEST(range, "used");
    }

    void parseNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("currency");
        QTest::addColumn<VeltoParsedNumberKind>("kind");
        QTest::addColumn<qint64>("integer");
        QTest::addColumn<double>("number");

        using K = VeltoParsedNumberKind;
        const qint64 untouched = -1;
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("integer amid whitespace") << u" 42\n"_s << false << K::Integer << qint64(42) << 42.0;
        QTest::newRow("smallest 64-bit") << u"-9223372036854775808"_s << false << K::Integer
                                         << std::numeric_limits<qint64>::min() << -9223372036854775808.0;
        QTest::newRow("past 64 bits is a double") << u"9223372036854775808"_s << false << K::Double << untouched
                                                  << 9223372036854775808.0;
        QTest::newRow("decimal point") << u"1.5"_s << false << K::Double << untouched << 1.5;
        QTest::newRow("currency before, thousands") << u"$1,234.50"_s << true << K::Double << untouched << 1234.5;
        QTest::newRow("currency not asked for") << u"$1,234.50"_s << false << K::None << untouched << nan;
        QTest::newRow("sign, symbol, space") << u"-$ 12"_s << true << K::Integer << qint64(-12) << -12.0;
        QTest::newRow("symbol after") << u"12 €"_s << true << K::Integer << qint64(12) << 12.0;
        QTest::newRow("comma that does not group") << u"1,23"_s << true << K::None << untouched << nan;
        QTest::newRow("trailing text") << u"12abc"_s << false << K::None << untouched << nan;
    }

    void parseNumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, currency);
        QFETCH(VeltoParsedNumberKind, kind);

        qint64 parsedInteger = -1;
        double parsedNumber = std::numeric_limits<double>::quiet_NaN();
        QCOMPARE(velto::parseInt(text, &parsedInteger, &parsedNumber, VeltoMakeRange(0, quint64(text.size())), currency),
                 kind);
        QTEST(parsedInteger, "integer");
        if (kind == VeltoParsedNumberKind::None)
            QVERIFY(qIsNaN(parsedNumber));
        else
            QTEST(parsedNumber, "number");
    }

    void parseNumberBadRange()
    {
        qint64 integer = 0;
        QCOMPARE(velto::parseInt(u"a 17 b", &integer, nullptr, VeltoMakeRange(1, 4), false),
                 VeltoParsedNumberKind::Integer);
        QCOMPARE(integer, 17);
        QCOMPARE(velto::parseInt(u"17", &integer, nullptr, VeltoMakeRange(1, 2), false), VeltoParsedNumberKind::None);
        QCOMPARE(velto::parseInt(u"17", nullptr, nullptr, VeltoMakeRange(quint64(-1), 2), false),
                 VeltoParsedNumberKind::None);
    }

    void integerText()
    {
        QCOMPARE(velto::stringWithVeltoInt(-42), u"-42"_s);
        QCOMPARE(velto::stringWithVeltoInt(std::numeric_limits<qint64>::min()), u"-9223372036854775808"_s);
    }
};

QTEST_GUILESS_MAIN(StringScanningTest)
#include "stringscanningtest.moc"
