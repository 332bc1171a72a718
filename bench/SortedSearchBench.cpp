// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// VeltoIndexOfBinarySearch on 1,000,000 sorted integers against std::lower_bound, for sought values
// that are present and absent half the time each; and the QList addition built on it
// (velto::indexOfSortedObjectVelto) against std::lower_bound on the same QList.

#include "BenchRatio.h"

#include "List+VeltoCore.h"

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr int Count = 1'000'000;

// Even numbers: an odd sought value is absent.
const std::vector<int> &sorted()
{
    static const std::vector<int> values = [] {
        std::vector<int> list(Count);
        for (int i = 0; i < Count; ++i)
            list[std::size_t(i)] = 2 * i;
        return list;
    }();
    return values;
}

const std::vector<int> &sought()
{
    static const std::vector<int> values = [] {
        std::mt19937 random(42);
        std::vector<int> list(8192);
        for (int &value : list)
            value = int(random() % (2 * Count));
        return list;
    }();
    return values;
}

const auto compareInts = [](int a, int b) { return qint64(a < b ? -1 : (a > b ? 1 : 0)); };

void BM_VeltoIndexOfBinarySearch(benchmark::State &state)
{
    const int *values = sorted().data();
    std::size_t next = 0;
    for (auto _ : state) {
        const int key = sought()[next++ % sought().size()];
        quint64 insertion = 0;
        const quint64 found = VeltoIndexOfBinarySearch(Count, &insertion, [&](quint64 i) { return compareInts(key, values[i]); });
        benchmark::DoNotOptimize(found == VeltoNotFound ? insertion : found);
    }
}
BENCHMARK(BM_VeltoIndexOfBinarySearch);

void BM_Baseline_StdLowerBound(benchmark::State &state)
{
    const std::vector<int> &values = sorted();
    std::size_t next = 0;
    for (auto _ : state) {
        const int key = sought()[next++ % sought().size()];
        benchmark::DoNotOptimize(std::lower_bound(values.begin(), values.end(), key) - values.begin());
    }
}
BENCHMARK(BM_Baseline_StdLowerBound);

const QList<int> &sortedList()
{
    static const QList<int> list(sorted().cbegin(), sorted().cend());
    return list;
}

void BM_IndexOfSortedObjectVeltoOnQList(benchmark::State &state)
{
    const QList<int> &list = sortedList();
    std::size_t next = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(velto::insertionIndexOfSortedObjectVelto(list, sought()[next++ % sought().size()], compareInts));
}
BENCHMARK(BM_IndexOfSortedObjectVeltoOnQList);

void BM_Baseline_StdLowerBoundOnQList(benchmark::State &state)
{
    const QList<int> &list = sortedList();
    std::size_t next = 0;
    for (auto _ : state) {
        const int key = sought()[next++ % sought().size()];
        benchmark::DoNotOptimize(std::lower_bound(list.cbegin(), list.cend(), key) - list.cbegin());
    }
}
BENCHMARK(BM_Baseline_StdLowerBoundOnQList);

} // namespace

VELTO_BENCHMARK_RATIO("BM_VeltoIndexOfBinarySearch", "BM_Baseline_StdLowerBound");
VELTO_BENCHMARK_RATIO("BM_IndexOfSortedObjectVeltoOnQList", "BM_Baseline_StdLowerBoundOnQList");

VELTO_BENCHMARK_MAIN()
