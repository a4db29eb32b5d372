// SPDX-License-Identifier: MIT
#include "jackmonitor.h"

#include <QThread>

#include <jack/jack.h>

#include <utility>

namespace {

constexpr auto kClientName = "VELT watch";
constexpr std::chrono::milliseconds kStalled{2000};
constexpr std::chrono::milliseconds kLongestCycle{500}; // 186 ms is the longest in use.
constexpr std::uint32_t kQuietCycles = 2;
constexpr int kMostCycles = 20;

} // namespace

JackMonitor::JackMonitor() : connecting(std::async(std::launch::async, &JackMonitor::connect, this))
{
}

JackMonitor::~JackMonitor()
{
    if (isConnected()) {
        jack_client_close(client);
    }
}

void JackMonitor::connect()
{
    client = jack_client_open(kClientName, JackNoStartServer, nullptr);
    if (!client) {
        return;
    }
    jack_set_process_callback(
        client,
        [](jack_nframes_t, void* self) {
            static_cast<JackMonitor*>(self)->cycleBegins();
            return 0;
        },
        this);
    jack_set_graph_order_callback(
        client,
        [](void* self) {
            static_cast<JackMonitor*>(self)->graphChanged();
            return 0;
        },
        this);
    jack_on_shutdown(
        client, [](void* self) { static_cast<JackMonitor*>(self)->shutDown = true; }, this);
    if (jack_activate(client) != 0) {
        jack_client_close(std::exchange(client, nullptr));
    }
}

bool JackMonitor::hasAnswered()
{
    if (connecting.valid() &&
        connecting.wait_until(madeAt + kStalled) == std::future_status::ready) {
        connecting.get();
    }
    return !connecting.valid();
}

void JackMonitor::cycleBegins()
{
    ++cycleCount;
    lastCycle = Clock::now().time_since_epoch().count();
}

JackMonitor::Clock::duration JackMonitor::sinceLastCycle() const
{
    return Clock::now().time_since_epoch() - Clock::duration(lastCycle);
}

bool JackMonitor::isStalled()
{
    return sinceLastCycle() >= kLongestCycle &&
           (!hasAnswered() || (client && !awaitCycles(1) && !shutDown));
}

bool JackMonitor::awaitCycles(std::uint32_t count) const
{
    const std::uint32_t start = cycleCount;
    while (cycleCount - start < count) {
        if (shutDown || sinceLastCycle() >= kStalled) {
            return false;
        }
        QThread::msleep(1);
    }
    return true;
}

bool JackMonitor::awaitQuietGraph() const
{
    for (int i = 0; i < kMostCycles; ++i) {
        if (!awaitCycles(1)) {
            return shutDown;
        }
        const std::uint32_t changed =
            changedAt; // Read first, so that it is not ahead of the count.
        if (cycleCount - changed >= kQuietCycles) {
            break;
        }
    }
    return true;
}
