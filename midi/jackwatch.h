// SPDX-License-Identifier: MIT
#pragma once

#include <RtMidi.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

struct _jack_client; // NOLINT(bugprone-reserved-identifier): JACK's own name of its client.

// Knows of the JACK server what the MIDI library does not tell: whether it is there, whether it
// runs, and when its graph of clients, ports and connections last changed. One JACK client without
// ports, which all ports of the process share.
//
// Used from the main thread.
class JackWatch
{
public:
    // The watch of this process, made where there is none yet. Null for every back end but JACK's.
    // To be called when a port of that back end has just been opened, and at no other time: the
    // client must not be made while the server may be dead, see QMidiIn::dropBackEnd(). It is made
    // at once, but on a thread of its own: it takes 20 ms that no window should wait for.
    static std::shared_ptr<JackWatch> ofProcess(RtMidi::Api api);
    // The same, but null where there is none yet.
    static std::shared_ptr<JackWatch> ofProcessIfAny(RtMidi::Api api);
    ~JackWatch();
    JackWatch(const JackWatch&) = delete;
    JackWatch& operator=(const JackWatch&) = delete;

    // Waits for the client. False if the server takes no more of them: then nothing is known, and
    // the server is taken for one that runs.
    bool isConnected();
    // Falls when the server ends, and never rises again.
    [[nodiscard]] bool isServerAlive() const { return serverAlive; }
    // True if the server is there but has run no period for so long; waits until that is certain.
    // Whatever is asked of such a server waits until it goes on, which may be never.
    [[nodiscard]] bool standsStill(std::chrono::milliseconds patience);
    // How long to wait for a server of which something must be asked. One in synchronous mode waits
    // ten times its own timeout for each client that has died: 2 s each were seen.
    static constexpr std::chrono::milliseconds kPatience{10000};
    // Counts up while the server runs, from any number; wraps around.
    [[nodiscard]] std::uint32_t periods() const { return periodCount; }
    // True as soon as the count is so many beyond an earlier one, false if it does not get there
    // within a second.
    [[nodiscard]] bool waitForPeriods(std::uint32_t since, std::uint32_t count);

    // Waits for a period to begin, and then until there has been no change for two periods, 300 ms
    // at most. False if the server stands still.
    [[nodiscard]] bool awaitQuietGraph();
    // To be called after each change that this process made.
    void graphChanged() { changedAt = periodCount.load(); }

    // Keeps a back end, and this watch, until the server goes on or ends.
    static void keep(std::shared_ptr<JackWatch> watch, std::shared_ptr<void> backEnd);
    // To be called before a client or a port is made, over whatever back end. Throws RtMidiError if
    // the server stands still; else lets go of what has been kept.
    static void requireAnswer();

private:
    JackWatch();
    void connect();
    [[nodiscard]] bool isConnecting() const;
    void periodBegins();
    [[nodiscard]] std::chrono::milliseconds sinceLastPeriod() const;

    using Clock = std::chrono::steady_clock;

    std::atomic<bool> serverAlive{true};
    std::atomic<std::uint32_t> periodCount{0};
    std::atomic<std::uint32_t> changedAt{0};
    std::atomic<Clock::rep> lastPeriod{Clock::now().time_since_epoch().count()};
    _jack_client* client = nullptr; // Active, or null. To be looked at when `connecting` is over.
    std::future<void> connecting;
};

// Surrounds what unregisters a port. After each change of the graph the server has every client
// look at the latencies of its ports, which the JACK library does on a thread of its own, without a
// lock: a port that goes at that moment crashes the process (seen with jackd2 1.9.21). So it goes
// while the graph is quiet. Does nothing without a watch.
class QuietGraph
{
public:
    explicit QuietGraph(std::shared_ptr<JackWatch> ofServer)
        : watch(std::move(ofServer)), isAnswered(!watch || watch->awaitQuietGraph())
    {
    }
    ~QuietGraph()
    {
        if (watch) {
            watch->graphChanged();
        }
    }
    QuietGraph(const QuietGraph&) = delete;
    QuietGraph& operator=(const QuietGraph&) = delete;

    // False: the server stands still, and unregistering would wait for it.
    [[nodiscard]] bool serverAnswers() const { return isAnswered; }

private:
    std::shared_ptr<JackWatch> watch;
    bool isAnswered;
};

// Closes the port of a back end. False, and it is still open, if the server of the watch stands
// still.
template <class Port>
bool closeQuietly(Port& backEnd, const std::shared_ptr<JackWatch>& watch)
{
    const QuietGraph quiet(watch);
    if (quiet.serverAnswers()) {
        backEnd.closePort();
    }
    return quiet.serverAnswers();
}

// The end of a back end, an RtMidiIn or RtMidiOut; null is allowed. One whose server stands still
// would wait for it: that one falls silent and is kept.
template <class Port>
void letGo(std::unique_ptr<Port> backEnd)
{
    const auto watch = backEnd ? JackWatch::ofProcessIfAny(backEnd->getCurrentApi()) : nullptr;
    const QuietGraph quiet(watch);
    if (!quiet.serverAnswers()) {
        if constexpr (std::is_same_v<Port, RtMidiIn>) {
            backEnd->cancelCallback();
        }
        JackWatch::keep(watch, std::move(backEnd));
        return;
    }
    backEnd.reset();
}
