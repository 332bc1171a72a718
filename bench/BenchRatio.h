// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// Every benchmark program compares the library with a named baseline in the same run. Register the
// pairs with VELTO_BENCHMARK_RATIO and use VELTO_BENCHMARK_MAIN(): after the usual table the program
// prints one line per pair with both times and ratio = ours / baseline (below 1 means faster).

#include <benchmark/benchmark.h>

namespace veltobench {

int registerRatio(const char *ours, const char *baseline);
int runWithRatios(int argc, char **argv);

} // namespace veltobench

#define VELTO_BENCHMARK_CONCAT_(a, b) a##b
#define VELTO_BENCHMARK_CONCAT(a, b) VELTO_BENCHMARK_CONCAT_(a, b)
#define VELTO_BENCHMARK_RATIO(ours, baseline)                                                        \
    [[maybe_unused]] static const int VELTO_BENCHMARK_CONCAT(veltoRatio_, __LINE__) =               \
        veltobench::registerRatio(ours, baseline)
#define VELTO_BENCHMARK_MAIN()                                                                       \
    int main(int argc, char **argv) { return veltobench::runWithRatios(argc, argv); }
