// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Broadcasting one message to 1, 100 and 10,000 observers of one class: the observer set against a Qt
// signal connected to the same slot of each observer, and against a plain loop of direct calls. Times are
// per broadcast; the "ns/observer" counter divides by the number of observers. An empty set is measured
// with a process-wide allocation counter: a broadcast to nobody must allocate nothing.

#include "BenchRatio.h"

#include "VeltoObserverSet.h"

#include <QObject>

#include <atomic>
#include <memory>
#include <vector>

namespace {

std::atomic<long long> allocationCount{0};

} // namespace

// Every heap allocation of the process, the library's and Qt's included, goes through these (operator
// new and QVarLengthArray end in malloc): glibc lets a program put its own in front of its allocator.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *block, size_t size);

void *malloc(size_t size)
{
    allocationCount.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    allocationCount.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}

void *realloc(void *block, size_t size)
{
    allocationCount.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(block, size);
}
}

class Listener : public QObject
{
    Q_OBJECT

public:
    long long count = 0;

public slots:
    void changed();
};

// Out of line and not inlined, so that every way of calling pays for one real call.
[[gnu::noinline]] void Listener::changed()
{
    ++count;
}

class Source : public QObject
{
    Q_OBJECT

signals:
    void changed();
};

namespace {

std::vector<std::unique_ptr<Listener>> makeListeners(qsizetype count)
{
    std::vector<std::unique_ptr<Listener>> listeners;
    for (qsizetype i = 0; i < count; ++i)
        listeners.push_back(std::make_unique<Listener>());
    return listeners;
}

// Nanoseconds per observer, and heap allocations per broadcast counted since \a allocationsBefore.
void perObserver(benchmark::State &state, long long allocationsBefore)
{
    state.counters["allocs/broadcast"] = double(allocationCount.load() - allocationsBefore) / double(state.iterations());
    state.counters["ns/observer"] = benchmark::Counter(double(state.iterations()) * double(state.range(0)),
                                                       benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_ObserverSetBroadcast(benchmark::State &state)
{
    const auto listeners = makeListeners(state.range(0));
    const auto set = VeltoObserverSet::create();
    for (const auto &listener : listeners)
        set->addObserver(listener.get());
    const long long before = allocationCount.load();
    for (auto _ : state)
        set->makeObserversPerformSelector("changed");
    perObserver(state, before);
}
BENCHMARK(BM_ObserverSetBroadcast)->Arg(1)->Arg(100)->Arg(10000);

void BM_Baseline_QtSignal(benchmark::State &state)
{
    const auto listeners = makeListeners(state.range(0));
    Source source;
    for (const auto &listener : listeners)
        QObject::connect(&source, &Source::changed, listener.get(), &Listener::changed);
    const long long before = allocationCount.load();
    for (auto _ : state)
        emit source.changed();
    perObserver(state, before);
}
BENCHMARK(BM_Baseline_QtSignal)->Arg(1)->Arg(100)->Arg(10000);

void BM_Baseline_DirectCalls(benchmark::State &state)
{
    const auto listeners = makeListeners(state.range(0));
    const long long before = allocationCount.load();
    for (auto _ : state) {
        for (const auto &listener : listeners)
            listener->changed();
        benchmark::ClobberMemory();
    }
    perObserver(state, before);
}
BENCHMARK(BM_Baseline_DirectCalls)->Arg(1)->Arg(100)->Arg(10000);

// The empty set: counts the allocations made by all broadcasts of the run.
void BM_EmptyObserverSetBroadcast(benchmark::State &state)
{
    const auto set = VeltoObserverSet::create();
    const long long before = allocationCount.load();
    for (auto _ : state)
        set->makeObserversPerformSelector("changed");
    state.counters["allocations"] = double(allocationCount.load() - before);
}
BENCHMARK(BM_EmptyObserverSetBroadcast);

void BM_Baseline_EmptyQtSignal(benchmark::State &state)
{
    Source source;
    const long long before = allocationCount.load();
    for (auto _ : state)
        emit source.changed();
    state.counters["allocations"] = double(allocationCount.load() - before);
}
BENCHMARK(BM_Baseline_EmptyQtSignal);

} // namespace

VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/1", "BM_Baseline_QtSignal/1");
VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/100", "BM_Baseline_QtSignal/100");
VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/10000", "BM_Baseline_QtSignal/10000");
VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/1", "BM_Baseline_DirectCalls/1");
VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/100", "BM_Baseline_DirectCalls/100");
VELTO_BENCHMARK_RATIO("BM_ObserverSetBroadcast/10000", "BM_Baseline_DirectCalls/10000");
VELTO_BENCHMARK_RATIO("BM_EmptyObserverSetBroadcast", "BM_Baseline_EmptyQtSignal");

VELTO_BENCHMARK_MAIN()

#include "ObserverSetBench.moc"
