// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Range arrays at the scale of a large document: carrying 1,000,000 ranges across one edit, and
// normalising 1,000,000 sorted and 1,000,000 shuffled ranges. Baselines work on a std::vector: the
// same edit rule applied in a plain loop, and std::sort by location followed by a merge loop.

#include "BenchRatio.h"

#include "VeltoMutableRangeArray.h"

#include <algorithm>
#include <random>
#include <vector>

namespace {

constexpr quint64 Count = 1'000'000;

// Ranges like found matches and styled runs: mostly separate, every so often touching or overlapping
// the one before.
const std::vector<VeltoRange> &sortedRanges()
{
    static const std::vector<VeltoRange> ranges = [] {
        std::mt19937_64 random(42);
        std::vector<VeltoRange> list;
        list.reserve(Count);
        quint64 location = 10;
        for (quint64 i = 0; i < Count; ++i) {
            const quint64 length = 1 + random() % 12;
            list.push_back({location, length});
            const quint64 step = random() % 8;
            location += step == 0 ? length / 2 : (step == 1 ? length : length + step);
        }
        return list;
    }();
    return ranges;
}

const std::vector<VeltoRange> &shuffledRanges()
{
    static const std::vector<VeltoRange> ranges = [] {
        std::vector<VeltoRange> list = sortedRanges();
        std::shuffle(list.begin(), list.end(), std::mt19937_64(7));
        return list;
    }();
    return ranges;
}

std::shared_ptr<VeltoMutableRangeArray> arrayOf(const std::vector<VeltoRange> &ranges)
{
    return VeltoMutableRangeArray::initWithCapacity(ranges.size(), ranges.data(), ranges.size());
}

// Three characters typed in front of every range, then deleted again: every range moves twice.
constexpr VeltoRange Typed{5, 3};
constexpr VeltoRange Deleted{5, 0};
constexpr quint64 PlusThree = 3;
constexpr quint64 MinusThree = quint64(0) - 3;

void BM_AdjustRangesForEdit(benchmark::State &state)
{
    const auto array = arrayOf(sortedRanges());
    bool typed = false;
    for (auto _ : state) {
        benchmark::DoNotOptimize(typed ? array->adjustRangesForEditInRange(Deleted, MinusThree)
                                       : array->adjustRangesForEditInRange(Typed, PlusThree));
        typed = !typed;
    }
    state.SetItemsProcessed(qint64(state.iterations() * Count));
}
BENCHMARK(BM_AdjustRangesForEdit)->Unit(benchmark::kMillisecond);

void BM_Baseline_VectorLoopForEdit(benchmark::State &state)
{
    std::vector<VeltoRange> ranges = sortedRanges();
    bool typed = false;
    for (auto _ : state) {
        const VeltoRange edit = typed ? Deleted : Typed;
        const quint64 delta = typed ? MinusThree : PlusThree;
        bool changed = false;
        for (VeltoRange &range : ranges) {
            const VeltoRange adjusted = VeltoRange_AdjustedUnionForEdit(range, edit, delta);
            changed |= adjusted != range;
            range = adjusted;
        }
        benchmark::DoNotOptimize(changed);
        typed = !typed;
    }
    state.SetItemsProcessed(qint64(state.iterations() * Count));
}
BENCHMARK(BM_Baseline_VectorLoopForEdit)->Unit(benchmark::kMillisecond);

void normalize(benchmark::State &state, const std::vector<VeltoRange> &input)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto array = arrayOf(input);
        state.ResumeTiming();
        array->normalizeRanges();
        benchmark::DoNotOptimize(array->count());
        state.PauseTiming();
        array.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(qint64(state.iterations() * Count));
}

void sortAndMerge(benchmark::State &state, const std::vector<VeltoRange> &input)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::vector<VeltoRange> ranges = input;
        state.ResumeTiming();
        std::sort(ranges.begin(), ranges.end(), [](VeltoRange a, VeltoRange b) { return a.location < b.location; });
        std::size_t out = 0;
        for (const VeltoRange &range : ranges) {
            if (range.length == 0)
                continue;
            if (out == 0 || range.location > ranges[out - 1].end())
                ranges[out++] = range;
            else
                ranges[out - 1] = VeltoUnionRange(ranges[out - 1], range);
        }
        ranges.resize(out);
        benchmark::DoNotOptimize(ranges.data());
        state.PauseTiming();
        ranges = {};
        state.ResumeTiming();
    }
    state.SetItemsProcessed(qint64(state.iterations() * Count));
}

void BM_NormalizeSorted(benchmark::State &state)
{
    normalize(state, sortedRanges());
}
BENCHMARK(BM_NormalizeSorted)->Unit(benchmark::kMillisecond);

void BM_Baseline_SortAndMergeSorted(benchmark::State &state)
{
    sortAndMerge(state, sortedRanges());
}
BENCHMARK(BM_Baseline_SortAndMergeSorted)->Unit(benchmark::kMillisecond);

void BM_NormalizeShuffled(benchmark::State &state)
{
    normalize(state, shuffledRanges());
}
BENCHMARK(BM_NormalizeShuffled)->Unit(benchmark::kMillisecond);

void BM_Baseline_SortAndMergeShuffled(benchmark::State &state)
{
    sortAndMerge(state, shuffledRanges());
}
BENCHMARK(BM_Baseline_SortAndMergeShuffled)->Unit(benchmark::kMillisecond);

} // namespace

VELTO_BENCHMARK_RATIO("BM_AdjustRangesForEdit", "BM_Baseline_VectorLoopForEdit");
VELTO_BENCHMARK_RATIO("BM_NormalizeSorted", "BM_Baseline_SortAndMergeSorted");
VELTO_BENCHMARK_RATIO("BM_NormalizeShuffled", "BM_Baseline_SortAndMergeShuffled");

VELTO_BENCHMARK_MAIN()
