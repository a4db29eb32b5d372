// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <exception>
#include <string>

// The measurements, one source file per concern, in the order of the table. All run on an X server
// and a MIDI server of their own.
void addStartup();
void addLocate();
void addNotes();
void addFiles();
void addTables();

// A line of the table. Each measurement repeats what it measures by itself, in turn with its floor,
// and throws where it cannot be done.
template <typename Measure>
void add(const std::string& name, const Measure& measure)
{
    benchmark::RegisterBenchmark(name.c_str(), [measure](benchmark::State& state) {
        for ([[maybe_unused]] auto once : state) {
            try {
                measure(state);
            } catch (const std::exception& error) {
                state.SkipWithError(error.what());
            }
        }
    })->Iterations(1);
}
