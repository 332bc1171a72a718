// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

// Cost of the test a logging statement makes: a disabled domain (one relaxed load of its bool) and an
// enabled domain whose statement is muted by flood control (the load, a clock read, the record update),
// against a plain relaxed load of a std::atomic<bool> as the baseline.

#include "BenchRatio.h"

#include "VeltoLogging.h"

#include <atomic>

namespace {

std::atomic<bool> baselineFlag{false};
bool disabledDomain = false;
bool enabledDomain = true;

void BM_Baseline_AtomicRelaxedLoad(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(baselineFlag.load(std::memory_order_relaxed));
}
BENCHMARK(BM_Baseline_AtomicRelaxedLoad);

void BM_DisabledDomainCheck(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoLog_IsEnabled(disabledDomain));
}
BENCHMARK(BM_DisabledDomainCheck);

// A statement firing in a tight loop: after its first 13 lines it is muted, so this measures the
// steady-state cost of an enabled statement under flood control, without writing lines.
void BM_EnabledCheckWithFloodControl(benchmark::State &state)
{
    // The record of a statement that has just been muted, and stays muted for the whole run.
    VeltoLogFloodControlData record;
    record.lastTime = VeltoLog_CurrentTime();
    record.disabledUntil = record.lastTime + 1e9;
    record.burstCount = 13;
    for (auto _ : state) {
        bool write = VeltoLog_IsEnabled(enabledDomain) && VeltoLog_ShouldLogWithFloodControlData(&record);
        benchmark::DoNotOptimize(write);
    }
}
BENCHMARK(BM_EnabledCheckWithFloodControl);

// The clock read alone, to show where the enabled check's time goes.
void BM_FloodControlClock(benchmark::State &state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(VeltoLog_CurrentTime());
}
BENCHMARK(BM_FloodControlClock);

} // namespace

VELTO_BENCHMARK_RATIO("BM_DisabledDomainCheck", "BM_Baseline_AtomicRelaxedLoad");
VELTO_BENCHMARK_RATIO("BM_EnabledCheckWithFloodControl", "BM_Baseline_AtomicRelaxedLoad");
VELTO_BENCHMARK_RATIO("BM_FloodControlClock", "BM_Baseline_AtomicRelaxedLoad");

VELTO_BENCHMARK_MAIN()
