// SPDX-License-Identifier: MIT
#include "jacklink.h"

#include "jackmonitor.h"

#include <QtGlobal>

#include <jack/jack.h>
#include <utility>
#include <vector>

namespace {

constexpr std::size_t kRingBudgetBytes = 4096; // A quarter of RtMidi's ring buffer.
constexpr std::size_t kRingHeaderBytes = sizeof(int);
constexpr std::uint32_t kCyclesToEmpty = 2; // One may be under way.

// All ports of the process share one monitor. It goes with the last of them.
std::weak_ptr<JackMonitor>& sharedMonitor()
{
    static std::weak_ptr<JackMonitor> monitor;
    return monitor;
}

struct StalledBackEnd
{
    std::shared_ptr<JackMonitor> monitor;
    std::shared_ptr<RtMidi> backEnd;
};

// Never destroyed: at the end of the process, that would wait for the server.
std::vector<StalledBackEnd>& stalledBackEnds()
{
    static auto* const all = new std::vector<StalledBackEnd>;
    return *all;
}

// Unregisters ports while the graph is quiet. False, and nothing is done, if the server is stalled.
template <class Act>
bool whenQuiet(const Act& unregister)
{
    const std::shared_ptr<JackMonitor> monitor = sharedMonitor().lock();
    if (monitor && !monitor->hasAnswered()) {
        return false;
    }
    const bool isWatched = monitor && monitor->isConnected();
    if (isWatched && !monitor->awaitQuietGraph()) {
        return false;
    }
    unregister();
    if (isWatched) {
        monitor->graphChanged();
    }
    return true;
}

[[noreturn]] void throwStalled()
{
    throw RtMidiError("The JACK server does not answer.", RtMidiError::DRIVER_ERROR);
}

} // namespace

void JackLink::requireServer()
{
    if (const auto monitor = sharedMonitor().lock(); monitor && monitor->isStalled()) {
        throwStalled();
    }
    for (auto& stalled = stalledBackEnds(); !stalled.empty(); stalled.pop_back()) {
        if (!whenQuiet([&stalled] { stalled.back().backEnd.reset(); })) {
            throwStalled();
        }
    }
}

bool JackLink::isServerRunning()
{
    jack_client_t* const client = jack_client_open("VELT check", JackNoStartServer, nullptr);
    return client && jack_client_close(client) == 0;
}

void JackLink::portOpened()
{
    monitor = sharedMonitor().lock();
    if (!monitor) {
        monitor = std::make_shared<JackMonitor>();
        sharedMonitor() = monitor;
    }
    monitor->graphChanged();
    // The new connection carries messages from the second cycle on: the first one waits for that.
    unsentBytes = kRingBudgetBytes;
    sentAt = monitor->cycles();
}

bool JackLink::canSend(std::size_t bytes)
{
    if (!monitor || (monitor->hasAnswered() && !monitor->isConnected())) {
        return true;
    }
    const bool wasDropping = isDropping;
    isDropping =
        monitor->hasShutDown() || monitor->isStalled() || !awaitRoomFor(bytes + kRingHeaderBytes);
    if (isDropping && !wasDropping) {
        qWarning("The JACK server does not answer; messages to it are dropped");
    }
    return !isDropping;
}

bool JackLink::isServerAlive() const
{
    return !monitor || !monitor->isConnected() || !monitor->hasShutDown();
}

bool JackLink::awaitRoomFor(std::size_t bytes)
{
    if (monitor->cycles() - sentAt >= kCyclesToEmpty) {
        unsentBytes = 0;
    }
    if (unsentBytes > 0 && unsentBytes + bytes > kRingBudgetBytes) {
        if (!monitor->awaitCycles(kCyclesToEmpty)) {
            return false;
        }
        unsentBytes = 0;
    }
    unsentBytes += bytes;
    sentAt = monitor->cycles();
    return true;
}

bool JackLink::closePort(RtMidi& backEnd)
{
    return whenQuiet([&backEnd] { backEnd.closePort(); });
}

void JackLink::destroy(std::shared_ptr<RtMidi> backEnd)
{
    if (backEnd && !whenQuiet([&backEnd] { backEnd.reset(); })) {
        if (auto* const input = dynamic_cast<RtMidiIn*>(backEnd.get())) {
            input->cancelCallback();
        }
        stalledBackEnds().push_back({sharedMonitor().lock(), std::move(backEnd)});
    }
    monitor.reset();
}
