// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoFileSizeFormatter.h"
#include "rangetostring.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

using Direction = VeltoFileSizeFormatter::StepDirection;

class FileSizeFormatterTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        VeltoFormatter::setDefaultVeltoLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void binaryByteCounts_data()
    {
        QTest::addColumn<quint64>("count");
        QTest::addColumn<QString>("expected");
        QTest::newRow("0") << quint64(0) << u"0 K"_s;
        QTest::newRow("1") << quint64(1) << u"1 K"_s;
        QTest::newRow("1,024") << quint64(1024) << u"1 K"_s;
        QTest::newRow("1,025") << quint64(1025) << u"1 K"_s;
        QTest::newRow("2,047 truncates") << quint64(2047) << u"1 K"_s;
        QTest::newRow("1,048,575") << quint64(1048575) << u"1023 K"_s;
        QTest::newRow("1,048,576") << quint64(1048576) << u"1 MB"_s;
        QTest::newRow("1,073,741,823") << quint64(1073741823) << u"1023 MB"_s;
        QTest::newRow("1,073,741,824") << quint64(1073741824) << u"1 GB"_s;
        QTest::newRow("largest") << Max << u"17179869183 GB"_s;
    }

    void binaryByteCounts()
    {
        QFETCH(quint64, count);
        QTEST(VeltoFileSizeFormatter::localizedStringForByteCount(count), "expected");
    }

    void decimalFileSizes_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<quint64>("size");
        QTest::addColumn<QString>("expected");
        const QLocale en(QLocale::English, QLocale::UnitedStates);
        const QLocale de(QLocale::German, QLocale::Germany);
        QTest::newRow("zero") << en << quint64(0) << u"0 KB"_s;
        QTest::newRow("one byte is 1 KB") << en << quint64(1) << u"1 KB"_s;
        QTest::newRow("999 bytes") << en << quint64(999) << u"1 KB"_s;
        QTest::newRow("1,500: half to even") << en << quint64(1500) << u"2 KB"_s;
        QTest::newRow("2,500: half to even") << en << quint64(2500) << u"2 KB"_s;
        QTest::newRow("123,456") << en << quint64(123456) << u"123 KB"_s;
        QTest::newRow("999,999 moves up") << en << quint64(999999) << u"1 MB"_s;
        QTest::newRow("1,500,000") << en << quint64(1500000) << u"1.5 MB"_s;
        QTest::newRow("12,345,678") << en << quint64(12345678) << u"12.3 MB"_s;
        QTest::newRow("1,234,567,890") << en << quint64(1234567890) << u"1.23 GB"_s;
        QTest::newRow("1,000,000,000,000") << en << quint64(1000000000000) << u"1 TB"_s;
        QTest::newRow("largest") << en << Max << u"18.45 EB"_s;
        QTest::newRow("German 1,500,000") << de << quint64(1500000) << u"1,5 MB"_s;
        QTest::newRow("German 123,456,789,012") << de << quint64(123456789012) << u"123,46 GB"_s;
    }

    void decimalFileSizes()
    {
        QFETCH(QLocale, locale);
        QFETCH(quint64, size);
        VeltoFormatter::setDefaultVeltoLocale(locale);
        QTEST(VeltoFileSizeFormatter::localizedStringForFileSize(size), "expected");
        VeltoFormatter::setDefaultVeltoLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    }

    void readingDecimalUnits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint64>("size");
        QTest::addColumn<VeltoRange>("unit");
        QTest::newRow("K") << u"12 K"_s << quint64(12000) << VeltoRange{3, 1};
        QTest::newRow("KB") << u"12 KB"_s << quint64(12000) << VeltoRange{3, 2};
        QTest::newRow("fraction ignored") << u"1.5 MB"_s << quint64(1000000) << VeltoRange{4, 2};
        QTest::newRow("GB") << u"3 GB"_s << quint64(3000000000) << VeltoRange{2, 2};
        QTest::newRow("bytes win over K") << u"512 bytes (0.5 K)"_s << quint64(512) << VeltoRange{4, 13};
        QTest::newRow("case-insensitive") << u"  42 mb"_s << quint64(42000000) << VeltoRange{5, 2};
        QTest::newRow("no unit") << u"7"_s << quint64(7) << VeltoRange{1, 0};
        QTest::newRow("no number") << u"abc"_s << quint64(0) << VeltoRange{3, 0};
        QTest::newRow("empty") << QString() << quint64(0) << VeltoRange{0, 0};
        QTest::newRow("negative") << u"-5 K"_s << quint64(0) << VeltoRange{3, 1};
        QTest::newRow("beyond 64 bits") << u"99999999999999999999 GB"_s << Max << VeltoRange{21, 2};
    }

    void readingDecimalUnits()
    {
        QFETCH(QString, text);
        QTEST(VeltoFileSizeFormatter::fileSizeFromLocalizedString(text), "size");
        VeltoRange found{VeltoNotFound, 0};
        (void)VeltoFileSizeFormatter::unitForString(text, &found);
        QTEST(found, "unit");
    }

    void stepping_data()
    {
        QTest::addColumn<quint64>("value");
        QTest::addColumn<Direction>("direction");
        QTest::addColumn<quint64>("expected");
        QTest::newRow("999 down") << quint64(999) << Direction::Down << quint64(998);
        QTest::newRow("1,000 down: step from the value") << quint64(1000) << Direction::Down << quint64(0);
        QTest::newRow("1,000,000 down") << quint64(1000000) << Direction::Down << quint64(0);
        QTest::newRow("1,500 down") << quint64(1500) << Direction::Down << quint64(500);
        QTest::newRow("0 down") << quint64(0) << Direction::Down << quint64(0);
        QTest::newRow("999 up") << quint64(999) << Direction::Up << quint64(1000);
        QTest::newRow("999,999 up") << quint64(999999) << Direction::Up << quint64(1000999);
        QTest::newRow("1,000,000,000 up") << quint64(1000000000) << Direction::Up << quint64(2000000000);
        QTest::newRow("overflow unchanged") << Max - 5 << Direction::Up << Max - 5;
    }

    void stepping()
    {
        QFETCH(quint64, value);
        QFETCH(Direction, direction);
        QTEST(VeltoFileSizeFormatter::steppedFileSize(value, direction), "expected");
    }

    void formatterInterface()
    {
        const VeltoFileSizeFormatter formatter = VeltoFileSizeFormatter::fileSizeFormatter();
        QCOMPARE(formatter.stringForObjectValue(1500000), u"1.5 MB"_s);
        QCOMPARE(formatter.stringForObjectValue(-3), u"0 KB"_s);
        QVERIFY(formatter.stringForObjectValue(u"1500000"_s).isNull());
        QVariant value;
        QVERIFY(formatter.getObjectValue(&value, u"2 MB"_s));
        QCOMPARE(value, QVariant(quint64(2000000)));
        QVERIFY(formatter.getObjectValue(&value, u"garbage"_s));
        QCOMPARE(value, QVariant(quint64(0)));
    }

private:
    static constexpr quint64 Max = std::numeric_limits<quint64>::max();
};

QTEST_GUILESS_MAIN(FileSizeFormatterTest)
#include "filesizeformattertest.moc"
