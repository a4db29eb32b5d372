// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>

struct _jack_client; // NOLINT(bugprone-reserved-identifier): the name in JACK's headers.

// Watches the JACK server through a client without ports: whether the server is there, whether it
// runs process cycles, and when its graph of clients and ports last changed. RtMidi tells none of
// this.
//
// A server is stalled if it is there but has run no process cycle for 2 s. One in synchronous mode
// pauses that long for each client that was killed.
//
// Main thread only. Connects on another thread, since that takes 20 ms.
class JackMonitor
{
public:
    // Call only right after a port was opened: a client that is made while objects of a dead server
    // are left makes the JACK library crash later.
    JackMonitor();
    ~JackMonitor();
    JackMonitor(const JackMonitor&) = delete;
    JackMonitor& operator=(const JackMonitor&) = delete;

    // Waits until the server has taken the client or refused it. False if it is stalled.
    [[nodiscard]] bool hasAnswered();
    // Waits for that answer. False if the server takes no further client: then nothing is known of
    // it.
    [[nodiscard]] bool isConnected() { return hasAnswered() && client; }
    // True once the server has ended; stays true.
    [[nodiscard]] bool hasShutDown() const { return shutDown; }
    // Waits until that is certain.
    [[nodiscard]] bool isStalled();
    // Wraps around.
    [[nodiscard]] std::uint32_t cycles() const { return cycleCount; }
    // Waits until that many cycles have begun. False if the server shuts down or is stalled.
    [[nodiscard]] bool awaitCycles(std::uint32_t count) const;

    // Waits until the graph has not changed for two cycles, but only some cycles if it changes all
    // the time. False if the server is stalled.
    [[nodiscard]] bool awaitQuietGraph() const;
    // Call after this process changed the graph: the server's own notice comes later.
    void graphChanged() { changedAt = cycleCount.load(); }

private:
    using Clock = std::chrono::steady_clock;

    void connect();
    void cycleBegins();
    [[nodiscard]] Clock::duration sinceLastCycle() const;

    std::atomic<bool> shutDown{false};
    std::atomic<std::uint32_t> cycleCount{0};
    std::atomic<std::uint32_t> changedAt{0};
    std::atomic<Clock::rep> lastCycle{Clock::now().time_since_epoch().count()};
    _jack_client* client = nullptr; // Null if it could not be activated. Valid after `connecting`.
    const Clock::time_point madeAt = Clock::now();
    std::future<void> connecting; // Waits for good while the server is stalled.
};
