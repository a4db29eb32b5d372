// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <optional>
#include <vector>

// The most that something may cost: a multiple of its floor, and an amount on top.
struct Target
{
    double factor = 1;
    double plus = 0;
};

// What one thing costs in the program, beside the least that it can cost. Measure both in turn, so
// that other load on the machine reaches both, and several times: medians are compared.
class Comparison
{
public:
    void ours(double value) { ourValues.push_back(value); }
    void floor(double value) { floorValues.push_back(value); }
    // Puts the medians among the benchmark's counters. Without a target: for information.
    void report(benchmark::State& state, std::optional<Target> target) const;

private:
    std::vector<double> ourValues;
    std::vector<double> floorValues;
};

// Prints a line for each benchmark, on standard output; where a target is missed it says so.
class TableReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    [[nodiscard]] bool areTargetsMet() const { return missed == 0; }

private:
    void reportRun(const Run& run);

    int missed = 0; // Or not measured.
};
