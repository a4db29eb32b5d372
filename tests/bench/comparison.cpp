// SPDX-License-Identifier: MIT
#include "comparison.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr int kNameWidth = 50;
constexpr const char* kOurs = "ours";
constexpr const char* kFloor = "floor";
constexpr const char* kFactor = "factor"; // The target's.
constexpr const char* kPlus = "plus";

std::string number(double value)
{
    char text[32];
    const int decimals = value < 10 ? 3 : value < 100 ? 2 : 1;
    std::snprintf(text, sizeof text, "%.*f", decimals, value);
    return text;
}

std::string targetText(Target target)
{
    char text[32];
    if (target.factor == 0) {
        std::snprintf(text, sizeof text, "%g", target.plus);
    } else if (target.plus == 0) {
        std::snprintf(text, sizeof text, "x %g", target.factor);
    } else {
        std::snprintf(text, sizeof text, "+ %g", target.plus);
    }
    return text;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 0 ? (values[half - 1] + values[half]) / 2 : values[half];
}

// Why a run was given up; empty otherwise. Google Benchmark 1.8 renamed error_message.
template <typename Run>
auto failure(const Run& run, int /*preferred*/) -> decltype(run.skip_message)
{
    return run.skip_message;
}

template <typename Run>
auto failure(const Run& run, long /*otherwise*/) -> decltype(run.error_message)
{
    return run.error_message;
}

} // namespace

void Comparison::report(benchmark::State& state, std::optional<Target> target) const
{
    state.counters[kOurs] = median(ourValues);
    state.counters[kFloor] = median(floorValues);
    if (target) {
        state.counters[kFactor] = target->factor;
        state.counters[kPlus] = target->plus;
    }
}

bool TableReporter::ReportContext(const Context& context)
{
    std::printf("%d processors", context.cpu_info.num_cpus);
    if (!context.cpu_info.load_avg.empty()) {
        std::printf(", load %.1f", context.cpu_info.load_avg.front());
    }
    std::printf("\n%-*s%10s%10s%8s  %s\n", kNameWidth, "", "ours", "floor", "ratio", "target");
    return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        reportRun(run);
        std::fflush(stdout);
    }
}

void TableReporter::reportRun(const Run& run)
{
    std::printf("%-*s", kNameWidth, run.run_name.function_name.c_str());
    if (const std::string reason = failure(run, 0); !reason.empty()) {
        std::printf("%s\n", reason.c_str());
        ++missed;
        return;
    }
    const double ours = run.counters.at(kOurs);
    const double floor = run.counters.at(kFloor);
    std::printf("%10s%10s%8.3f", number(ours).c_str(), number(floor).c_str(), ours / floor);
    if (run.counters.count(kFactor) > 0) {
        const Target target{run.counters.at(kFactor), run.counters.at(kPlus)};
        const bool isMissed = ours > target.factor * floor + target.plus;
        std::printf("  %s%s", targetText(target).c_str(), isMissed ? "  MISSED" : "");
        missed += isMissed ? 1 : 0;
    }
    std::printf("\n");
}

void TableReporter::Finalize()
{
    if (missed > 0) {
        std::printf("%d missed\n", missed);
    } else {
        std::printf("all targets are met\n");
    }
}
