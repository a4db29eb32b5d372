// SPDX-License-Identifier: MIT
#pragma once

#include <RtMidi.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

struct _jack_client; // NOLINT(bugprone-reserved-identifier): JACK's own name of its client.

// Knows of the JACK server what the MIDI library does not tell: whether it is there, how many
// periods it has run, and when its graph of clients, ports and connections last changed. One JACK
// client without ports, which all ports of the process share.
//
// Used from the main thread.
class JackWatch
{
public:
    // The watch of this process, made where there is none yet. Null for every back end but JACK's,
    // and if the server takes no more clients. To be called when a port of that back end has just
    // been opened, and at no other time: a client must not be made while the server may be dead,
    // see QMidiIn::dropBackEnd().
    static std::shared_ptr<JackWatch> ofProcess(RtMidi::Api api);
    ~JackWatch();
    JackWatch(const JackWatch&) = delete;
    JackWatch& operator=(const JackWatch&) = delete;

    // Falls when the server ends, and never rises again.
    [[nodiscard]] bool isServerAlive() const { return serverAlive; }
    // Counts up while the server runs, from any number; wraps around.
    [[nodiscard]] std::uint32_t periods() const { return periodCount; }
    // True as soon as the count is so many beyond an earlier one, false if it does not get there
    // within a second.
    [[nodiscard]] bool waitForPeriods(std::uint32_t since, std::uint32_t count) const;

    // Two periods without a change are quiet. Waits for that, 300 ms at most.
    void awaitQuietGraph() const;
    // To be called after each change that this process made.
    void graphChanged() { changedAt = periodCount.load(); }

private:
    explicit JackWatch(_jack_client* ofServer);

    _jack_client* client;
    std::atomic<bool> serverAlive{true};
    std::atomic<std::uint32_t> periodCount{0};
    std::atomic<std::uint32_t> changedAt{0};
};

// Surrounds what unregisters a port. After each change of the graph the server has every client
// look at the latencies of its ports, which the JACK library does on a thread of its own, without a
// lock: a port that goes at that moment crashes the process (seen with jackd2 1.9.21). So it goes
// while the graph is quiet. Does nothing without a watch.
class QuietGraph
{
public:
    explicit QuietGraph(std::shared_ptr<JackWatch> ofServer) : watch(std::move(ofServer))
    {
        if (watch) {
            watch->awaitQuietGraph();
        }
    }
    ~QuietGraph()
    {
        if (watch) {
            watch->graphChanged();
        }
    }
    QuietGraph(const QuietGraph&) = delete;
    QuietGraph& operator=(const QuietGraph&) = delete;

private:
    std::shared_ptr<JackWatch> watch;
};
