// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "rangetestsupport.h"

#include "List+VeltoCore.h"
#include "VeltoRandom.h"

#include <algorithm>
#include <numeric>

using namespace Qt::StringLiterals;

namespace {

const auto byValue = [](int a, int b) { return qint64(a < b ? -1 : (a > b ? 1 : 0)); };

// An element with a value to sort by and a tag to tell equal elements apart.
struct Tagged
{
    int value;
    char tag;
    bool operator==(const Tagged &) const = default;
};
const auto taggedByValue = [](const Tagged &a, const Tagged &b) { return byValue(a.value, b.value); };

} // namespace

// A QObject element that compares itself with another through a named method.
class Item : public QObject
{
    Q_OBJECT
public:
    explicit Item(int value) : value(value) {}
    Q_INVOKABLE int compareItem(Item *other) const { return value < other->value ? -1 : (value > other->value ? 1 : 0); }
    Q_INVOKABLE qint64 distanceTo(Item *other) const { return qint64(value) - other->value; }
    const int value;
};

class SortedSearchTest : public QObject
{
    Q_OBJECT

private slots:
    void binarySearch()
    {
        // Found and insertion indexes are compared with std::lower_bound below; these show the nearest index.
        const QList<int> list{1, 3, 3, 3, 7};
        quint64 insertionIndex = 99; // left alone after a match
        QCOMPARE(velto::indexOfSortedObjectVelto(list, 3, byValue, &insertionIndex), 1u); // the first of the run
        QCOMPARE(insertionIndex, 99u);
        for (const auto &[sought, nearest] : {std::pair{3, quint64(1)}, {4, 4}, {0, 0}, {9, VeltoNotFound}, {7, 4}})
            QCOMPARE(velto::nearestIndexOfSortedObjectVelto(list, sought, byValue), nearest);
        quint64 unused = 0;
        QCOMPARE(VeltoIndexOfBinarySearch(0, &unused, [](quint64) { return qint64(0); }), VeltoNotFound);
        QCOMPARE(unused, 0u);
    }

    void anyOtherAnswerCountsAsEqual()
    {
        // 2 stops the search as a match; the walk down to the first of the run takes only 0.
        const QList<int> list{1, 3, 3, 3, 7};
        const auto answersTwo = [](int a, int b) { return qint64(a < b ? -1 : (a > b ? 1 : 2)); };
        QCOMPARE(velto::indexOfSortedObjectVelto(list, 3, answersTwo), 2u);
        const auto answersMinusFive = [](int a, int b) { return qint64(a < b ? -1 : (a > b ? 1 : -5)); };
        QCOMPARE(velto::indexOfSortedObjectVelto(list, 7, answersMinusFive), 4u);
    }

    void binarySearchMatchesLowerBound()
    {
        VeltoTestRandom random(21);
        for (int round = 0; round < 2000; ++round) {
            QList<int> list(random.bounded(0, 40));
            for (int &value : list)
                value = random.bounded(20);
            std::sort(list.begin(), list.end());
            const int sought = random.bounded(-1, 22);
            const auto lower = std::lower_bound(list.begin(), list.end(), sought) - list.begin();
            const bool present = lower < list.size() && list[lower] == sought;
            quint64 insertion = 1234;
            const quint64 found = velto::indexOfSortedObjectVelto(list, sought, byValue, &insertion);
            QCOMPARE(found, present ? quint64(lower) : VeltoNotFound);
            QCOMPARE(insertion, present ? 1234u : quint64(lower));
            QCOMPARE(velto::insertionIndexOfSortedObjectVelto(list, sought, byValue), quint64(lower));
        }
    }

    void sortedInsertAndRemove()
    {
        QList<int> list{1, 3, 3, 3, 7};
        QVERIFY(velto::removeSortedObjectVelto(list, 3, byValue));
        QCOMPARE(list, (QList<int>{1, 7}));
        QVERIFY(!velto::removeSortedObjectVelto(list, 4, byValue));
        QCOMPARE(list, (QList<int>{1, 7}));
        // The sought object may be an element itself: it is kept while its run goes.
        QList<int> again{2, 5, 5, 9};
        QVERIFY(velto::removeSortedObjectVelto(again, again[2], byValue));
        QCOMPARE(again, (QList<int>{2, 9}));

        // A new element goes in front of its equals.
        QList<Tagged> tagged{{1, 'a'}, {4, 'b'}, {4, 'c'}, {8, 'd'}};
        QCOMPARE(velto::insertSortedObjectVelto(tagged, Tagged{4, 'n'}, taggedByValue), 1u);
        QCOMPARE(tagged[1].tag, 'n');
        QCOMPARE(velto::insertSortedObjectVelto(tagged, Tagged{9, 'z'}, taggedByValue), 5u);
    }

    void compareSelector()
    {
        Item one(1), three(3), threeAgain(3), seven(7), four(4);
        QList<Item *> items{&one, &three, &threeAgain, &seven};
        QCOMPARE(velto::indexOfSortedObjectVeltoWithCompareSelector(items, &threeAgain, "compareItem"), 1u);
        QCOMPARE(velto::nearestIndexOfSortedObjectVeltoWithCompareSelector(items, &four, "compareItem"), 3u);
        QCOMPARE(velto::insertSortedObjectVeltoWithCompareSelector(items, &four, "compareItem"), 3u);
        QVERIFY(velto::removeSortedObjectVeltoWithCompareSelector(items, &three, "compareItem"));
        QCOMPARE(items, (QList<Item *>{&one, &four, &seven}));
        // A linear scan needs no order: the first element at distance 0.
        QCOMPARE(velto::indexOfObjectVelto(QList<Item *>{&seven, &four, &one}, &four, "distanceTo"), 1u);
        QCOMPARE(velto::indexOfObjectVelto(QList<Item *>{}, &four, "distanceTo"), VeltoNotFound);
        VELTO_COMPARE_THROWN((void)velto::indexOfObjectVelto(items, &four, "noSuchMethod"), VeltoInvalidArgumentException,
                             u"-[Item noSuchMethod]: unrecognized selector sent to instance 0x%1"_s.arg(quintptr(&four), 0, 16));
    }

    void moving_data()
    {
        QTest::addColumn<QStringList>("objects");
        QTest::addColumn<quint64>("destination");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("b to 0") << QStringList{u"b"_s} << quint64(0) << QStringList{u"b"_s, u"a"_s, u"c"_s};
        QTest::newRow("b to 5") << QStringList{u"b"_s} << quint64(5) << QStringList{u"a"_s, u"c"_s, u"b"_s};
        QTest::newRow("c and a to 1") << QStringList{u"c"_s, u"a"_s} << quint64(1) << QStringList{u"c"_s, u"a"_s, u"b"_s};
    }

    void moving()
    {
        QFETCH(QStringList, objects);
        QFETCH(quint64, destination);
        QTEST(velto::arrayByMovingObjects(QStringList{u"a"_s, u"b"_s, u"c"_s}, objects, destination), "expected");
    }

    void reverseAndRandomize()
    {
        QStringList letters{u"a"_s, u"b"_s, u"c"_s};
        velto::moveObjectAtIndex(letters, 0, 2);
        QCOMPARE(letters, (QStringList{u"b"_s, u"c"_s, u"a"_s}));
        letters = QStringList{u"a"_s, u"b"_s, u"c"_s};
        velto::reverseVelto(letters);
        QCOMPARE(letters, (QStringList{u"c"_s, u"b"_s, u"a"_s}));

        // A shuffle is a permutation, repeatable from a seed.
        (void)VeltoRandom_Int();
        const auto shuffled = [] {
            VeltoRandom_ResetSeed(99);
            QList<int> numbers(50);
            std::iota(numbers.begin(), numbers.end(), 0);
            velto::randomizeVelto(numbers);
            return numbers;
        };
        const QList<int> first = shuffled();
        QCOMPARE(shuffled(), first);
        QList<int> sorted = first;
        std::sort(sorted.begin(), sorted.end());
        QVERIFY(sorted != first);
        for (int i = 0; i < 50; ++i)
            QCOMPARE(sorted[i], i);

        QCOMPARE(velto::arrayByAddingObjectVelto(QVariant(), QVariantList{1}), QVariantList{1});
        QCOMPARE(velto::arrayByRemovingObjectVelto(QStringList{u"a"_s, u"b"_s, u"a"_s}, u"a"_s), (QStringList{u"b"_s, u"a"_s}));
        Item item(1), twin(1);
        QVERIFY(velto::containsObjectIdenticalToVelto(QList<Item *>{&item}, &item));
        QVERIFY(!velto::containsObjectIdenticalToVelto(QList<Item *>{&item}, &twin));
    }

    void testsAndReverseEnumeration()
    {
        const QList<int> list{4, 8, 15, 16, 23, 42};
        const velto::ListTest<int> even = [](const int &value, quint64, bool *) { return value % 2 == 0; };
        QCOMPARE(velto::subarrayWithObjectsPassingTestVelto(list, even), (QList<int>{4, 8, 16, 42}));
        QCOMPARE(velto::lastObjectPassingTestVelto(list, even), std::optional<int>(42));
        // The stop flag wins even on the call that passed.
        const velto::ListTest<int> stops = [](const int &, quint64, bool *stop) { return *stop = true; };
        QCOMPARE(velto::indexOfLastObjectPassingTestVelto(list, stops), VeltoNotFound);

        QList<quint64> visited;
        velto::enumerateObjectsInReverseVeltoUsing(list, velto::ListBlock<int>([&](const int &, quint64 index, bool *stop) {
                                                       visited.append(index);
                                                       *stop = index == 3;
                                                   }));
        QCOMPARE(visited, (QList<quint64>{5, 4, 3}));

        const QVariantList boxed{velto::valueWithRange({1, 2}), velto::valueWithRange({4, 1})};
        QCOMPARE(velto::rangeAtIndex(boxed, 1), (VeltoRange{4, 1}));
        QVERIFY(velto::enumerateRangesVeltoUsing(QVariantList{}, [](VeltoRange, quint64, bool *) {}));
        QVERIFY(!velto::enumerateRangesVeltoUsing(boxed, [](VeltoRange, quint64, bool *stop) { *stop = true; }));
    }

    void boundsAndSortedness()
    {
        const QList<int> list{1, 5, 3, 4};
        QVERIFY(velto::isSortedInRangeVelto(list, {0, 2}, byValue));
        QVERIFY(!velto::isSortedInRangeVelto(list, {0, 3}, byValue));
        QVERIFY(velto::isSortedInRangeVelto(list, {2, 2}, byValue));
        QVERIFY(velto::isSortedInRangeVelto(list, {3, 0}, byValue)); // reads index 3, compares nothing
        VELTO_COMPARE_THROWN((void)velto::isSortedInRangeVelto(list, {4, 0}, byValue), VeltoRangeException,
                             u"*** index 4 beyond bounds [0 .. 3]"_s);
        QList<int> empty;
        VELTO_COMPARE_THROWN(velto::moveObjectAtIndex(empty, 0, 1), VeltoRangeException,
                             u"*** index 0 beyond bounds for empty array"_s);
    }
};

QTEST_GUILESS_MAIN(SortedSearchTest)
#include "sortedsearchtest.moc"
