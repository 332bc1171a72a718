// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "rangetestsupport.h"

#include "Variant+VeltoRanges.h"
#include "VeltoBoxedRangeArray.h"
#include "VeltoRangeArray.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Ranges = QList<VeltoRange>;

// An array of either kind holding \a ranges; both must answer the shared vocabulary the same way.
std::shared_ptr<VeltoAbstractRangeArray> makeArray(const QString &kind, const Ranges &ranges)
{
    if (kind == u"boxed") {
        QVariantList boxed;
        for (const VeltoRange &range : ranges)
            boxed.append(velto::valueWithRange(range));
        return std::make_shared<VeltoBoxedRangeArray>(boxed);
    }
    return VeltoMutableRangeArray::initWithCapacity(ranges.size(), ranges.constData(), ranges.size());
}

// The model of normal form: non-empty ranges sorted, then merged where they overlap or touch.
Ranges sortAndMerge(Ranges ranges)
{
    ranges.removeIf([](VeltoRange r) { return r.length == 0; });
    std::sort(ranges.begin(), ranges.end(), [](VeltoRange a, VeltoRange b) { return a.location < b.location; });
    Ranges merged;
    for (const VeltoRange &r : std::as_const(ranges)) {
        if (!merged.isEmpty() && r.location <= merged.last().end())
            merged.last() = VeltoUnionRange(merged.last(), r);
        else
            merged.append(r);
    }
    return merged;
}

Ranges randomRanges(QRandomGenerator &random, int count, quint32 span)
{
    Ranges ranges;
    for (int i = 0; i < count; ++i)
        ranges.append({random.bounded(span), random.bounded(6u)});
    return ranges;
}

QString outOfBounds(quint64 index, quint64 bound)
{
    return u"The given VeltoRangeArray index (%1) is out of bounds (%2)."_s.arg(index).arg(bound);
}

} // namespace

class RangeArrayTest : public QObject
{
    Q_OBJECT

private slots:
    void initialisersAndGrowthNeverPerRange();
    void boundsAndValueErrorsLoseNothing();
    void immutableGuardsExactlyItsPrimitives();
    void copiesAndSharedArrays();
    void normalize();
    void normalizationOfShuffledInputMatchesSortAndMerge();
    void isNormalizedAndInvert();
    void indexesIntersecting();
    void indexesIntersectingMatchesLinearScan();
    void sortedInsertionUnionAndEdits();
};

void RangeArrayTest::initialisersAndGrowthNeverPerRange()
{
    QCOMPARE(VeltoMutableRangeArray::init()->capacity(), 4u);
    QCOMPARE(VeltoMutableRangeArray::initWithCapacity(0)->capacity(), 1u);
    const Ranges five{{0, 1}, {1, 1}, {2, 1}, {3, 1}, {4, 1}};
    QCOMPARE(rangesOf(*VeltoMutableRangeArray::initWithCapacity(2, five.constData(), 5)), five.first(2));
    QVERIFY(!VeltoMutableRangeArray::initWithCapacity(quint64(1) << 62)); // no buffer, no array

    auto small = VeltoMutableRangeArray::init();
    small->insertRangesFromArray(*makeArray(u"boxed"_s, Ranges(20, {9, 9})), 0);
    QCOMPARE(small->capacity(), 20u); // count + 20
    // A million ranges added one by one: the buffer grows only by doubling, never per range.
    auto grown = VeltoMutableRangeArray::init();
    quint64 reallocations = 0;
    for (quint64 i = 0; i < 1'000'000; ++i) {
        const quint64 before = grown->capacity();
        grown->addRange({i, 1});
        if (grown->capacity() != before) {
            ++reallocations;
            QCOMPARE(grown->capacity(), std::max(grown->count(), 2 * before));
        }
    }
    QCOMPARE(reallocations, 18u); // 4 -> 8 (at the fifth range) -> ... -> 4 * 2^18
}

void RangeArrayTest::boundsAndValueErrorsLoseNothing()
{
    for (const QString &kind : {u"compact"_s, u"boxed"_s}) {
        const auto array = makeArray(kind, {{0, 1}, {5, 2}, {9, 1}});
        VELTO_COMPARE_THROWN(array->insertRange({1, 1}, 4), VeltoRangeException, outOfBounds(4, 4));
        VELTO_COMPARE_THROWN((void)array->rangeAtIndex(3), VeltoRangeException, outOfBounds(3, 3));
        VELTO_COMPARE_THROWN(array->removeObjectsInRange({2, 2}), VeltoRangeException, outOfBounds(3, 3));
        VELTO_COMPARE_THROWN(array->removeObjectsInRange({0, 0}), VeltoRangeException, outOfBounds(~quint64(0), 3));
        VELTO_COMPARE_THROWN(array->removeObjectsInRange({~quint64(0), 2}), VeltoRangeException, outOfBounds(0, 3));
        VELTO_COMPARE_THROWN(array->addObject(u"text"_s), VeltoInvalidArgumentException,
                             u"A value of type QString was given where a boxed VeltoRange is expected"_s);
        QCOMPARE(rangesOf(*array), (Ranges{{0, 1}, {5, 2}, {9, 1}}));
        // The boxed-object interface reaches the same primitives.
        array->insertObject(velto::valueWithRange({20, 1}), 3); // at count: appends
        array->replaceObjectAtIndex(0, velto::valueWithRange({1, 1}));
        array->removeObjectAtIndex(1);
        QCOMPARE(velto::rangeValue(array->objectAtIndex(2)), (VeltoRange{20, 1}));
        array->removeLastObject();
        QCOMPARE(rangesOf(*array), (Ranges{{1, 1}, {9, 1}}));
    }
    VeltoRange buffer[1];
    VELTO_COMPARE_THROWN(VeltoMutableRangeArray::init()->getRanges(buffer, {0, 1}), VeltoRangeException, outOfBounds(0, 0));
}

void RangeArrayTest::immutableGuardsExactlyItsPrimitives()
{
    const Ranges start{{0, 2}, {4, 1}};
    const auto immutable = VeltoRangeArray::initWithCapacity(4, start.constData(), 2);
    const QList<std::pair<QString, std::function<void()>>> guarded{
        {u"addRange"_s, [&] { immutable->addRange({}); }},
        {u"insertRange"_s, [&] { immutable->insertRange({}, 0); }},
        {u"replaceRangeAtIndex"_s, [&] { immutable->replaceRangeAtIndex(0, {}); }},
        {u"removeRangeAtIndex"_s, [&] { immutable->removeRangeAtIndex(0); }},
        {u"removeObjectsInRange"_s, [&] { immutable->removeObjectsInRange({0, 1}); }},
        {u"normalizeRanges"_s, [&] { immutable->normalizeRanges(); }},
        // The boxed-object mutators and the operations built on the primitives reach the guards too.
        {u"addRange"_s, [&] { immutable->addObject(velto::valueWithRange({})); }},
        {u"insertRange"_s, [&] { immutable->insertSortedRange({1, 1}); }},
        {u"replaceRangeAtIndex"_s, [&] { immutable->adjustRangesForEditInRange({0, 1}, 1); }},
        {u"replaceRangeAtIndex"_s, [&] { immutable->adjustRangesForEditInRange({3, 1}, 1); }}, // the second moves
    };
    // Plain members, not a structured binding: the check's lambda captures them (clang 14 cannot).
    for (const auto &entry : guarded) {
        const auto &call = entry.second;
        VELTO_COMPARE_THROWN(call(), VeltoInternalInconsistencyException,
                             u"Attempt to modify immutable VeltoRangeArray via "_s + entry.first);
    }
    QCOMPARE(rangesOf(*immutable), start);
    // Not guarded, as it has always been: these two do change an immutable array.
    immutable->insertRangesFromArray(*VeltoMutableRangeArray::initWithRange({8, 8}), 0);
    QCOMPARE(rangesOf(*immutable), (Ranges{{8, 8}, {0, 2}, {4, 1}}));
    immutable->removeAllObjects();
    QCOMPARE(immutable->count(), 0u);
}

void RangeArrayTest::copiesAndSharedArrays()
{
    const Ranges ranges{{1, 1}, {3, 1}};
    const auto mutableArray = VeltoMutableRangeArray::initWithCapacity(10, ranges.constData(), 2);
    const auto copy = mutableArray->copy();
    QCOMPARE(rangesOf(*copy), ranges);
    QCOMPARE(copy->capacity(), 2u);
    QCOMPARE(mutableArray->mutableCopy()->capacity(), 10u);
    QCOMPARE(copy->subarrayWithRange({0, 2}), copy); // an immutable array is its own whole subarray
    QCOMPARE(rangesOf(*mutableArray->subarrayWithRange({1, 1})), (Ranges{{3, 1}}));
    QCOMPARE(mutableArray->subarrayWithRange({0, 0}), VeltoRangeArray::emptyArray());
    QCOMPARE(VeltoAbstractRangeArray::arrayWithZeroRange(), VeltoAbstractRangeArray::arrayWithZeroRange());
    QCOMPARE(rangesOf(*VeltoAbstractRangeArray::arrayWithZeroRange()), (Ranges{{0, 0}}));
    // Fewer than two ranges normalise to the receiver itself; one not held by a shared_ptr gives a copy.
    const auto single = VeltoMutableRangeArray::initWithRange({5, 0});
    QCOMPARE(single->arrayByNormalizingRanges(), single);
    VeltoBoxedRangeArray onStack({velto::valueWithRange({5, 0})});
    QCOMPARE(rangesOf(*onStack.arrayByNormalizingRanges()), (Ranges{{5, 0}}));
}

void RangeArrayTest::normalize()
{
    // Arrays of empty ranges alone keep their first one, whatever its place.
    for (const Ranges &input : {Ranges{{7, 0}}, Ranges{{4, 0}, {9, 0}}, Ranges{{3, 0}, {1, 0}}}) {
        auto compact = VeltoMutableRangeArray::initWithCapacity(input.size(), input.constData(), input.size());
        compact->normalizeRanges();
        QCOMPARE(rangesOf(*compact), input.first(1));
        QCOMPARE(rangesOf(*makeArray(u"boxed"_s, input)->arrayByNormalizingRanges()), input.first(1));
    }
}

void RangeArrayTest::normalizationOfShuffledInputMatchesSortAndMerge()
{
    QRandomGenerator random(3);
    for (int round = 0; round < 300; ++round) {
        const Ranges input = randomRanges(random, int(random.bounded(2u, 60u)), random.bounded(10u, 400u));
        const Ranges merged = sortAndMerge(input);
        const Ranges expected = merged.isEmpty() ? Ranges{input.first()} : merged;
        auto compact = VeltoMutableRangeArray::initWithCapacity(input.size(), input.constData(), input.size());
        compact->normalizeRanges();
        QCOMPARE(rangesOf(*compact), expected);
        QVERIFY(compact->isNormalizedRangeArray());
        compact->normalizeRanges(); // again: nothing changes
        QCOMPARE(rangesOf(*compact), expected);
        QCOMPARE(rangesOf(*makeArray(u"boxed"_s, input)->arrayByNormalizingRanges()), expected);
    }
}

void RangeArrayTest::isNormalizedAndInvert()
{
    const QList<std::pair<Ranges, bool>> cases{{{{0, 2}, {2, 1}}, false}, {{{0, 2}, {3, 0}}, true}, {{{3, 0}}, true},
                                               {{}, true}, {{{5, 1}, {0, 1}}, false}, {{{0, 5}, {3, 4}}, false}};
    for (const QString &kind : {u"compact"_s, u"boxed"_s}) {
        for (const auto &[ranges, normalized] : cases)
            QCOMPARE(makeArray(kind, ranges)->isNormalizedRangeArray(), normalized);
        const auto array = makeArray(kind, {{2, 3}, {7, 1}});
        QCOMPARE(rangesOf(*array->arrayByInvertingRangesWithinLimit(10)), (Ranges{{0, 2}, {5, 2}, {8, 2}}));
        QCOMPARE(rangesOf(*array->arrayByInvertingRangesWithinLimit(4)), (Ranges{{0, 2}}));
        QCOMPARE(rangesOf(*makeArray(kind, {})->arrayByInvertingRangesWithinLimit(6)), (Ranges{{0, 6}}));
        QCOMPARE(makeArray(kind, {})->arrayByInvertingRangesWithinLimit(0)->count(), 0u);
    }
}

void RangeArrayTest::indexesIntersecting()
{
    const Ranges four{{0, 2}, {2, 2}, {5, 1}, {9, 3}};
    const VeltoRange all{0, ~quint64(0)}, none{VeltoNotFound, 0};
    // Ranges, query, index span searched, expected index span.
    const QList<std::tuple<Ranges, VeltoRange, VeltoRange, VeltoRange>> rows = {
        {four, {3, 4}, all, {1, 2}},
        {four, {2, 0}, all, none},                               // an empty query
        {{{4, 0}}, {4, 0}, all, {0, 1}},                         // a single empty element
        {{{4, 0}}, {1, 3}, {5, 5}, {0, 1}},                      // ... at the query's end
        {four, {0, 20}, {1, 2}, {1, 2}},                         // the index span limits
        {four, {0, 20}, {3, 9}, {3, 1}},                         // a span beyond the end
        {{{0, 1}, {3, 0}, {6, 1}}, {2, 3}, all, {1, 1}},         // an empty element inside
    };
    for (const auto &[ranges, range, indexes, expected] : rows) {
        for (const QString &kind : {u"compact"_s, u"boxed"_s})
            QCOMPARE(makeArray(kind, ranges)->indexesOfSortedRangesIntersectingRange(range, indexes), expected);
    }
}

void RangeArrayTest::indexesIntersectingMatchesLinearScan()
{
    QRandomGenerator random(5);
    for (int round = 0; round < 500; ++round) {
        const Ranges ranges = sortAndMerge(randomRanges(random, int(random.bounded(2u, 40u)), 200));
        const VeltoRange query{random.bounded(210u), random.bounded(1u, 30u)};
        VeltoRange expected{VeltoNotFound, 0};
        for (qsizetype i = 0; i < ranges.size(); ++i) {
            if (VeltoIntersectionRange(ranges[i], query).length != 0)
                expected = expected.length == 0 ? VeltoRange{quint64(i), 1} : VeltoRange{expected.location, expected.length + 1};
        }
        QCOMPARE(makeArray(u"compact"_s, ranges)->indexesOfSortedRangesIntersectingRange(query), expected);
    }
}

void RangeArrayTest::sortedInsertionUnionAndEdits()
{
    for (const QString &kind : {u"compact"_s, u"boxed"_s}) {
        // Sorted insertion against std::lower_bound: equal ranges go in front of their equals.
        const auto array = makeArray(kind, {});
        QRandomGenerator random(9);
        Ranges model;
        for (int i = 0; i < 300; ++i) {
            const VeltoRange range{random.bounded(30u), random.bounded(4u)};
            array->insertSortedRange(range);
            model.insert(std::lower_bound(model.begin(), model.end(), range,
                                          [](VeltoRange a, VeltoRange b) { return VeltoRange_Compare(a, b) < 0; }),
                         range);
        }
        QCOMPARE(rangesOf(*array), model);
        QCOMPARE(array->insertionIndexForSortedRange(model[150]), quint64(model.indexOf(model[150])));

        // The union reads only the first and the last range.
        QCOMPARE(makeArray(kind, {{0, 9}, {3, 1}})->unionSortedRanges(), (VeltoRange{0, 9}));
        QCOMPARE(makeArray(kind, {{3, 1}, {0, 9}})->unionSortedRanges(), (VeltoRange{0, 9}));
        QCOMPARE(makeArray(kind, {{3, 1}, {40, 1}, {5, 2}})->unionSortedRanges(), (VeltoRange{3, 4}));
        QCOMPARE(makeArray(kind, {})->unionSortedRanges(), (VeltoRange{VeltoNotFound, 0}));

        const Ranges start{{2, 3}, {10, 5}, {20, 0}};
        const auto edited = makeArray(kind, start);
        QVERIFY(!edited->adjustRangesForEditInRange({0, 4}, 0));
        QVERIFY(!edited->adjustRangesForEditInRange({30, 4}, 4)); // after every range
        QCOMPARE(rangesOf(*edited), start);
        // Deleting 9 to 10 reaches into (10, 5), which keeps the union; nothing is normalised afterwards.
        QVERIFY(edited->adjustRangesForEditInRange({9, 0}, quint64(0) - 2));
        QCOMPARE(rangesOf(*edited), (Ranges{{2, 3}, {9, 4}, {18, 0}}));
        QVERIFY(edited->adjustRangesForEditInRange({0, 4}, 4));
        QCOMPARE(rangesOf(*edited), (Ranges{{6, 3}, {13, 4}, {22, 0}}));

        // Random edits against the rule applied range by range.
        QRandomGenerator editRandom(11);
        for (int round = 0; round < 300; ++round) {
            Ranges model = randomRanges(editRandom, int(editRandom.bounded(0u, 12u)), 40);
            const auto adjusted = makeArray(kind, model);
            const VeltoRange edit{editRandom.bounded(45u), editRandom.bounded(5u)};
            const quint64 delta = quint64(qint64(editRandom.bounded(9u)) - 4);
            bool changed = false;
            for (VeltoRange &range : model) {
                const VeltoRange moved = VeltoRange_AdjustedUnionForEdit(range, edit, delta);
                changed |= moved != range;
                range = moved;
            }
            QCOMPARE(adjusted->adjustRangesForEditInRange(edit, delta), changed);
            QVERIFY2(rangesOf(*adjusted) == model, qPrintable(u"round %1, seed 11"_s.arg(round)));
        }
    }
}

QTEST_GUILESS_MAIN(RangeArrayTest)
#include "rangearraytest.moc"
