// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoRandom.h"
#include "veltotest.h"

#include <QSet>
#include <QTest>

#include <cstdlib>
#include <ctime>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr quint64 uint64Max = std::numeric_limits<quint64>::max();

// The first n values the C library generator gives after srandom(seed).
QList<long> sequenceAfterSeed(unsigned seed, int n)
{
    srandom(seed);
    QList<long> values;
    for (int i = 0; i < n; ++i)
        values.append(random());
    return values;
}

} // namespace

class RandomTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Runs first on purpose: it needs a process in which nothing has been drawn yet.
    void resetSeedBeforeFirstDrawIsOverwritten()
    {
        const time_t before = time(nullptr);
        VeltoRandom_ResetSeed(42);
        const long first = VeltoRandom_Int();
        const time_t after = time(nullptr);

        // The first draw seeded from the clock at some second between before and after.
        QSet<long> clockSeeded;
        for (time_t second = before; second <= after; ++second)
            clockSeeded.insert(sequenceAfterSeed(unsigned(second), 1).constFirst());
        QVERIFY(clockSeeded.contains(first));
        const long fromSeed42 = sequenceAfterSeed(42, 1).constFirst();
        if (!clockSeeded.contains(fromSeed42))
            QVERIFY(first != fromSeed42);
    }

    // After the first draw a reset seed gives the C library's sequence for that seed (random() after
    // srandom(2024), as glibc has always given it), every time.
    void drawsComeFromTheSeededGenerator()
    {
        const QList<long> expected{742133555, 1180362363, 1165600424, 1892020700,
                                   978625329, 1995647964, 397347510,  230079146};
        VeltoRandom_ResetSeed(2024);
        QCOMPARE(long(VeltoRandom_Int()), expected.at(0));
        QCOMPARE(long(VeltoRandom_Integer()), expected.at(1));
        QCOMPARE(VeltoRandom_Float(), double(expected.at(2)) / 2147483647.0);
        QCOMPARE(VeltoRandom_UIntegerBetween(10, 19), 10 + quint64(expected.at(3)) % 10);
        QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(500, 7)), 500 + quint64(expected.at(4)) % 7);
        // With high below low, high - low + 1 wraps to 2^64 - 4, which every random() value is below.
        for (int i = 5; i < 8; ++i)
            QCOMPARE(VeltoRandom_UIntegerBetween(10, 5), 10 + quint64(expected.at(i)));
    }

    void uIntegerBetween_data()
    {
        QTest::addColumn<quint64>("low");
        QTest::addColumn<quint64>("high");

        QTest::newRow("single value") << quint64(5) << quint64(5);
        QTest::newRow("top of the range") << uint64Max - 9 << uint64Max;
        QTest::newRow("all but one value") << quint64(0) << uint64Max - 1;
        QTest::newRow("wider than random()") << quint64(0) << quint64(10000000000ULL);
    }

    void uIntegerBetween()
    {
        QFETCH(quint64, low);
        QFETCH(quint64, high);

        VeltoRandom_ResetSeed(99);
        QSet<quint64> seen;
        for (int i = 0; i < 1000; ++i) {
            const quint64 value = VeltoRandom_UIntegerBetween(low, high);
            QVERIFY2(value >= low && value <= high, qPrintable(QString::number(value)));
            seen.insert(value);
        }
        // Small ranges are covered completely.
        if (high - low < 10)
            QCOMPARE(quint64(seen.size()), high - low + 1);
    }

    void fullRangeThrows_data()
    {
        QTest::addColumn<quint64>("low");
        QTest::addColumn<quint64>("high");

        QTest::newRow("zero to largest") << quint64(0) << uint64Max;
        QTest::newRow("one to zero") << quint64(1) << quint64(0);
    }

    void fullRangeThrows()
    {
        QFETCH(quint64, low);
        QFETCH(quint64, high);
        const long next = sequenceAfterSeed(5, 1).constFirst();
        VeltoRandom_ResetSeed(5);
        VELTO_COMPARE_THROWN((void)VeltoRandom_UIntegerBetween(low, high), VeltoInvalidArgumentException,
                             u"VeltoRandom_UIntegerBetween: the range %1 to %2 holds every 64-bit value, which cannot be "
                             u"counted"_s.arg(low).arg(high));
        QCOMPARE(long(VeltoRandom_Int()), next); // nothing was drawn
    }

    void emptyRangeDrawsNothing()
    {
        const long next = sequenceAfterSeed(17, 1).constFirst();
        VeltoRandom_ResetSeed(17);
        QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(42, 0)), quint64(42));
        QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(VeltoNotFound, 0)), VeltoNotFound);
        QCOMPARE(long(VeltoRandom_Int()), next);
        // A range that ends at the largest value stays inside it.
        QVERIFY(VeltoRandom_LocationInRange(VeltoMakeRange(uint64Max - 3, 4)) >= uint64Max - 3);
    }
};

QTEST_GUILESS_MAIN(RandomTest)
#include "randomtest.moc"
