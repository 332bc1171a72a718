// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// The spatial array with 100,000 entries laid out like the lines and blocks of a long document: a query
// of a short extent (one screenful) against a linear scan of every entry, and the cost of inserting
// an entry, in layout order and in random order, against std::multimap keyed by the start.

#include "BenchRatio.h"

#include "VeltoSpatialArray.h"

#include <algorithm>
#include <map>
#include <random>
#include <vector>

namespace {

constexpr int Count = 100'000;
constexpr double QueryLength = 60;

struct Item
{
    std::shared_ptr<void> object;
    VeltoSpatialEdge edge;
};

// Lines of 12 to 40 units one after the other, with a block spanning a few lines every so often.
const std::vector<Item> &layout()
{
    static const std::vector<Item> items = [] {
        std::mt19937_64 random(42);
        std::vector<Item> list;
        list.reserve(Count);
        double y = 0;
        for (int i = 0; i < Count; ++i) {
            const double height = 12 + double(random() % 29);
            const bool block = random() % 16 == 0;
            list.push_back({std::make_shared<int>(i), {y, block ? height * 4 : height}});
            y += height;
        }
        return list;
    }();
    return items;
}

const std::vector<double> &queryStarts()
{
    static const std::vector<double> starts = [] {
        std::mt19937_64 random(7);
        const double end = layout().back().edge.end();
        std::vector<double> list(4096);
        for (double &start : list)
            start = double(random() % quint64(end));
        return list;
    }();
    return starts;
}

void BM_SpatialQueryShortExtent(benchmark::State &state)
{
    VeltoSpatialArray array;
    for (const Item &item : layout())
        array.addObject(item.object, item.edge);
    std::size_t next = 0;
    for (auto _ : state) {
        int found = 0;
        array.enumerateObjectsInEdge({queryStarts()[next++ % queryStarts().size()], QueryLength},
                                     [&found](const std::shared_ptr<void> &, VeltoSpatialEdge, bool *) { ++found; });
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_SpatialQueryShortExtent);

void BM_Baseline_LinearScanShortExtent(benchmark::State &state)
{
    const std::vector<Item> &items = layout();
    std::size_t next = 0;
    for (auto _ : state) {
        const double start = queryStarts()[next++ % queryStarts().size()];
        const double end = start + QueryLength;
        int found = 0;
        for (const Item &item : items)
            found += item.edge.location <= end && item.edge.end() >= start;
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(BM_Baseline_LinearScanShortExtent);

void insertAll(benchmark::State &state, const std::vector<Item> &items)
{
    for (auto _ : state) {
        auto array = std::make_unique<VeltoSpatialArray>();
        for (const Item &item : items)
            array->addObject(item.object, item.edge);
        benchmark::DoNotOptimize(array->count());
        state.PauseTiming();
        array.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * qint64(items.size()));
}

void multimapInsertAll(benchmark::State &state, const std::vector<Item> &items)
{
    for (auto _ : state) {
        auto index = std::make_unique<std::multimap<double, Item>>();
        for (const Item &item : items)
            index->emplace(item.edge.location, item);
        benchmark::DoNotOptimize(index->size());
        state.PauseTiming();
        index.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * qint64(items.size()));
}

const std::vector<Item> &shuffledLayout()
{
    static const std::vector<Item> items = [] {
        std::vector<Item> list = layout();
        std::shuffle(list.begin(), list.end(), std::mt19937_64(3));
        return list;
    }();
    return items;
}

void BM_SpatialInsertInLayoutOrder(benchmark::State &state)
{
    insertAll(state, layout());
}
BENCHMARK(BM_SpatialInsertInLayoutOrder)->Unit(benchmark::kMillisecond);

void BM_Baseline_MultimapInsertInLayoutOrder(benchmark::State &state)
{
    multimapInsertAll(state, layout());
}
BENCHMARK(BM_Baseline_MultimapInsertInLayoutOrder)->Unit(benchmark::kMillisecond);

void BM_SpatialInsertInRandomOrder(benchmark::State &state)
{
    insertAll(state, shuffledLayout());
}
BENCHMARK(BM_SpatialInsertInRandomOrder)->Unit(benchmark::kMillisecond);

void BM_Baseline_MultimapInsertInRandomOrder(benchmark::State &state)
{
    multimapInsertAll(state, shuffledLayout());
}
BENCHMARK(BM_Baseline_MultimapInsertInRandomOrder)->Unit(benchmark::kMillisecond);

} // namespace

VELTO_BENCHMARK_RATIO("BM_SpatialQueryShortExtent", "BM_Baseline_LinearScanShortExtent");
VELTO_BENCHMARK_RATIO("BM_SpatialInsertInLayoutOrder", "BM_Baseline_MultimapInsertInLayoutOrder");
VELTO_BENCHMARK_RATIO("BM_SpatialInsertInRandomOrder", "BM_Baseline_MultimapInsertInRandomOrder");

VELTO_BENCHMARK_MAIN()
