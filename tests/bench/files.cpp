// SPDX-License-Identifier: MIT
// Reading and writing the set-list file.
#include "benchmarks.h"
#include "comparison.h"
#include "shows.h"

#include <QProcess>
#include <QTemporaryDir>

#include <stdexcept>
#include <utility>

namespace {

constexpr Target kReadTarget{1.2};
constexpr Target kReadSmallTarget{1.35}; // Looking up each key makes 1.17 of parsing alone.
constexpr Target kWriteTarget{1.2};
constexpr Target kGrowthTarget{1.2}; // More than linear.
constexpr int kLargest = 100'000;

int repetitions(int entries)
{
    return 5 + 100000 / entries;
}

// A set-list file of this many entries, for the jobs of filejob.cpp. Each gets a copy.
class SampleFile
{
public:
    explicit SampleFile(int entryCount) : entries(entryCount)
    {
        showsOf(entries).writeEdit(path());
    }

    [[nodiscard]] double run(const QString& job) const
    {
        const QString copy = path() + ".copy";
        QFile::remove(copy);
        QFile::copy(path(), copy);
        QProcess process;
        process.start(VELT_FILE_JOB, {job, copy, QString::number(entries)});
        if (!process.waitForFinished(-1) || process.exitCode() != 0) {
            throw std::runtime_error("the job on the file failed");
        }
        return process.readAllStandardOutput().toDouble();
    }

private:
    [[nodiscard]] QString path() const { return directory.filePath("shows.ini"); }

    QTemporaryDir directory;
    int entries;
};

void measure(benchmark::State& state, int entries, const char* ours, const char* floor,
             Target target)
{
    const SampleFile file(entries);
    Comparison ms;
    for (int i = 0; i < repetitions(entries); ++i) {
        ms.ours(file.run(ours));
        ms.floor(file.run(floor));
    }
    ms.report(state, target);
}

// A large file beside ten of a tenth.
void measureGrowth(benchmark::State& state)
{
    const SampleFile large(kLargest);
    const SampleFile tenth(kLargest / 10);
    Comparison ms;
    for (int i = 0; i < repetitions(kLargest); ++i) {
        ms.ours(large.run("read"));
        ms.floor(10 * tenth.run("read"));
    }
    ms.report(state, kGrowthTarget);
}

} // namespace

void addFiles()
{
    for (const auto& [size, target] :
         {std::pair{1000, kReadSmallTarget}, {10000, kReadTarget}, {kLargest, kReadTarget}}) {
        add("read a file of " + std::to_string(size) + " entries (ms)",
            [entries = size, limit = target](benchmark::State& state) {
                measure(state, entries, "read", "parse", limit);
            });
    }
    add("the last, beside ten times a tenth of it (ms)", measureGrowth);
    for (const int entries : {1000, 10000}) {
        add("write a file of " + std::to_string(entries) + " entries (ms)",
            [=](benchmark::State& state) {
                measure(state, entries, "write", "set", kWriteTarget);
            });
    }
}
