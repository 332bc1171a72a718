// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "BenchRatio.h"

#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace veltobench {

namespace {

std::vector<std::pair<std::string, std::string>> &pairs()
{
    static std::vector<std::pair<std::string, std::string>> list;
    return list;
}

// Collects nanoseconds per iteration of every run while the console table is printed as usual.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run> &runs) override
    {
        // With repetitions the median stands for the benchmark (noise from other work on the machine only
        // ever adds time, which drags a mean); a single run stands for itself.
        for (const Run &run : runs) {
            if (run.error_occurred)
                continue;
            const std::string name = run.run_name.str();
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median")
                nanoseconds[name] = run.GetAdjustedRealTime() * timeUnitToNanoseconds(run.time_unit);
            else if (run.run_type == Run::RT_Iteration && run.iterations > 0 && !means.count(name))
                nanoseconds[name] = run.real_accumulated_time * 1e9 / double(run.iterations);
            if (run.run_type == Run::RT_Aggregate)
                means.insert(name);
        }
        ConsoleReporter::ReportRuns(runs);
    }

    void printRatios() const
    {
        std::printf("\n%-66s %12s %12s %8s\n", "ours vs baseline", "ours ns", "baseline ns", "ratio");
        for (const auto &[ours, baseline] : pairs()) {
            const auto a = nanoseconds.find(ours);
            const auto b = nanoseconds.find(baseline);
            if (a == nanoseconds.end() || b == nanoseconds.end())
                continue;
            std::printf("%-66s %12.3f %12.3f %8.3g\n", (ours + " / " + baseline).c_str(), a->second, b->second,
                        a->second / b->second);
        }
    }

private:
    static double timeUnitToNanoseconds(benchmark::TimeUnit unit)
    {
        switch (unit) {
        case benchmark::kSecond: return 1e9;
        case benchmark::kMillisecond: return 1e6;
        case benchmark::kMicrosecond: return 1e3;
        default: return 1.0;
        }
    }

    std::map<std::string, double> nanoseconds;
    std::set<std::string> means;
};

} // namespace

int registerRatio(const char *ours, const char *baseline)
{
    pairs().emplace_back(ours, baseline);
    return int(pairs().size());
}

int runWithRatios(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}

} // namespace veltobench
