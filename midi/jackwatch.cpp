// SPDX-License-Identifier: MIT
#include "jackwatch.h"

#include <QElapsedTimer>
#include <QThread>

#include <jack/jack.h>

namespace {

constexpr auto kClientName = "RtMidi Watch Client";
constexpr qint64 kStandsStillMs = 1000;
constexpr qint64 kQuietMs = 300;
constexpr std::uint32_t kQuietPeriods = 2;

// False if it did not come true in time. A period is some milliseconds.
template <class Condition>
bool waitUntil(qint64 timeoutMs, Condition condition)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.hasExpired(timeoutMs)) {
            return false;
        }
        QThread::msleep(1);
    }
    return true;
}

} // namespace

std::shared_ptr<JackWatch> JackWatch::ofProcess(RtMidi::Api api)
{
    if (api != RtMidi::UNIX_JACK) {
        return nullptr;
    }
    static std::weak_ptr<JackWatch> current;
    std::shared_ptr<JackWatch> watch = current.lock();
    if (!watch) {
        if (jack_client_t* client = jack_client_open(kClientName, JackNoStartServer, nullptr)) {
            watch.reset(new JackWatch(client));
            current = watch;
        }
    }
    return watch;
}

JackWatch::JackWatch(_jack_client* ofServer) : client(ofServer)
{
    jack_set_process_callback(
        client,
        [](jack_nframes_t, void* self) {
            ++static_cast<JackWatch*>(self)->periodCount;
            return 0;
        },
        this);
    jack_set_graph_order_callback(
        client,
        [](void* self) {
            static_cast<JackWatch*>(self)->graphChanged();
            return 0;
        },
        this);
    jack_on_shutdown(
        client, [](void* self) { static_cast<JackWatch*>(self)->serverAlive = false; }, this);
    jack_activate(client);
}

JackWatch::~JackWatch()
{
    jack_client_close(client);
}

bool JackWatch::waitForPeriods(std::uint32_t since, std::uint32_t count) const
{
    const auto havePassed = [&] { return periods() - since >= count; };
    return waitUntil(kStandsStillMs, [&] { return havePassed() || !serverAlive; }) && havePassed();
}

void JackWatch::awaitQuietGraph() const
{
    waitUntil(kQuietMs,
              [this] { return !serverAlive || periodCount - changedAt >= kQuietPeriods; });
}
