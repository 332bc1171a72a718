#include "VeltoException.h"
#include "VeltoRandom.h"

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
    void resetSeedBeforeFirstDrawIsOverwritten();
    void resetSeedAfterFirstDrawRepeats();
    void drawsComeFromTheSeededGenerator();
    void uIntegerBetween_data();
    void uIntegerBetween();
    void uIntegerBetweenCoversEveryValue();
    void uIntegerBetweenWithHighBelowLowWraps();
    void fullRangeThrows_data();
    void fullRangeThrows();
    void locationInRange();
    void floatStaysInUnitInterval();
};

void RandomTest::resetSeedBeforeFirstDrawIsOverwritten()
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

void RandomTest::resetSeedAfterFirstDrawRepeats()
{
    (void)VeltoRandom_Int();

    const auto draw = [] {
        QList<double> values;
        values << VeltoRandom_Int() << double(VeltoRandom_Integer()) << VeltoRandom_Float()
               << double(VeltoRandom_UIntegerBetween(100, 199))
               << double(VeltoRandom_LocationInRange(VeltoMakeRange(1000, 50)));
        return values;
    };
    VeltoRandom_ResetSeed(7);
    const QList<double> first = draw();
    VeltoRandom_ResetSeed(7);
    QCOMPARE(draw(), first);
    VeltoRandom_ResetSeed(8);
    QVERIFY(draw() != first);
}

void RandomTest::drawsComeFromTheSeededGenerator()
{
    (void)VeltoRandom_Int();
    const QList<long> expected = sequenceAfterSeed(2024, 5);

    VeltoRandom_ResetSeed(2024);
    QCOMPARE(long(VeltoRandom_Int()), expected.at(0));
    QCOMPARE(long(VeltoRandom_Integer()), expected.at(1));
    QCOMPARE(VeltoRandom_Float(), double(expected.at(2)) / 2147483647.0);
    QCOMPARE(VeltoRandom_UIntegerBetween(10, 19), 10 + quint64(expected.at(3)) % 10);
    QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(500, 7)), 500 + quint64(expected.at(4)) % 7);
}

void RandomTest::uIntegerBetween_data()
{
    QTest::addColumn<quint64>("low");
    QTest::addColumn<quint64>("high");

    QTest::newRow("single value") << quint64(5) << quint64(5);
    QTest::newRow("zero only") << quint64(0) << quint64(0);
    QTest::newRow("digits") << quint64(0) << quint64(9);
    QTest::newRow("wide") << quint64(1000) << quint64(1000000);
    QTest::newRow("top of the range") << uint64Max - 9 << uint64Max;
    QTest::newRow("largest value alone") << uint64Max << uint64Max;
    QTest::newRow("all but one value") << quint64(0) << uint64Max - 1;
    QTest::newRow("wider than random()") << quint64(0) << quint64(10000000000ULL);
}

void RandomTest::uIntegerBetween()
{
    QFETCH(quint64, low);
    QFETCH(quint64, high);

    VeltoRandom_ResetSeed(99);
    for (int i = 0; i < 2000; ++i) {
        const quint64 value = VeltoRandom_UIntegerBetween(low, high);
        QVERIFY2(value >= low && value <= high, qPrintable(QString::number(value)));
    }
}

void RandomTest::uIntegerBetweenCoversEveryValue()
{
    VeltoRandom_ResetSeed(3);
    QSet<quint64> seen;
    for (int i = 0; i < 1000; ++i)
        seen.insert(VeltoRandom_UIntegerBetween(0, 9));
    QCOMPARE(seen, (QSet<quint64>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));

    for (int i = 0; i < 100; ++i)
        QCOMPARE(VeltoRandom_UIntegerBetween(5, 5), quint64(5));
}

void RandomTest::uIntegerBetweenWithHighBelowLowWraps()
{
    // high - low + 1 wraps to 2^64 - 4, which every random() value is below: low + random().
    (void)VeltoRandom_Int();
    const QList<long> expected = sequenceAfterSeed(11, 3);
    VeltoRandom_ResetSeed(11);
    for (const long value : expected)
        QCOMPARE(VeltoRandom_UIntegerBetween(10, 5), 10 + quint64(value));
}

void RandomTest::fullRangeThrows_data()
{
    QTest::addColumn<quint64>("low");
    QTest::addColumn<quint64>("high");

    QTest::newRow("zero to largest") << quint64(0) << uint64Max;
    QTest::newRow("one to zero") << quint64(1) << quint64(0);
    QTest::newRow("largest to one below") << uint64Max << uint64Max - 1;
}

void RandomTest::fullRangeThrows()
{
    QFETCH(quint64, low);
    QFETCH(quint64, high);

    (void)VeltoRandom_Int();
    const long next = sequenceAfterSeed(5, 1).constFirst();
    VeltoRandom_ResetSeed(5);
    try {
        (void)VeltoRandom_UIntegerBetween(low, high);
        QFAIL("the full range must throw");
    } catch (const VeltoException &exception) {
        QCOMPARE(exception.name(), QString(VeltoInvalidArgumentException));
        QVERIFY2(exception.reason().contains(QString::number(high)), qPrintable(exception.reason()));
    }
    // Nothing was drawn.
    QCOMPARE(long(VeltoRandom_Int()), next);
}

void RandomTest::locationInRange()
{
    (void)VeltoRandom_Int();
    const long next = sequenceAfterSeed(17, 1).constFirst();

    // An empty range gives its location without drawing.
    VeltoRandom_ResetSeed(17);
    QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(42, 0)), quint64(42));
    QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(VeltoNotFound, 0)), VeltoNotFound);
    QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(uint64Max, 0)), uint64Max);
    QCOMPARE(long(VeltoRandom_Int()), next);

    QCOMPARE(VeltoRandom_LocationInRange(VeltoMakeRange(100, 1)), quint64(100));

    QSet<quint64> seen;
    for (int i = 0; i < 500; ++i) {
        const quint64 location = VeltoRandom_LocationInRange(VeltoMakeRange(10, 5));
        QVERIFY(location >= 10 && location < 15);
        seen.insert(location);
    }
    QCOMPARE(seen.size(), 5);

    // A range that ends at the largest value stays inside it.
    for (int i = 0; i < 100; ++i)
        QVERIFY(VeltoRandom_LocationInRange(VeltoMakeRange(uint64Max - 3, 4)) >= uint64Max - 3);
}

void RandomTest::floatStaysInUnitInterval()
{
    VeltoRandom_ResetSeed(123);
    double lowest = 1, highest = 0;
    for (int i = 0; i < 10000; ++i) {
        const double value = VeltoRandom_Float();
        QVERIFY2(value >= 0.0 && value <= 1.0, qPrintable(QString::number(value)));
        lowest = qMin(lowest, value);
        highest = qMax(highest, value);
    }
    // Spread over the interval, not stuck in a corner of it.
    QVERIFY(lowest < 0.01);
    QVERIFY(highest > 0.99);
}

QTEST_GUILESS_MAIN(RandomTest)
#include "randomtest.moc"
