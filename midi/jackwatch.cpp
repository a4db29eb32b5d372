// SPDX-License-Identifier: MIT
#include "jackwatch.h"

#include <QElapsedTimer>
#include <QThread>
#include <QTimer>

#include <jack/jack.h>

#include <utility>
#include <vector>

namespace {

constexpr auto kClientName = "VELT watch";
constexpr std::chrono::milliseconds kLately{500}; // Periods are shorter, 186 ms at most.
constexpr int kConnectMs = 200;
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

std::weak_ptr<JackWatch>& current()
{
    static std::weak_ptr<JackWatch> watch;
    return watch;
}

struct Kept
{
    std::shared_ptr<JackWatch> watch;
    std::shared_ptr<void> backEnd;
};

// Never destroyed: what it holds at the end of the process would wait for the server even then.
std::vector<Kept>& kept()
{
    static auto* all = new std::vector<Kept>;
    return *all;
}

} // namespace

std::shared_ptr<JackWatch> JackWatch::ofProcess(RtMidi::Api api)
{
    std::shared_ptr<JackWatch> watch = ofProcessIfAny(api);
    if (!watch && api == RtMidi::UNIX_JACK) {
        watch.reset(new JackWatch);
        current() = watch;
        QTimer::singleShot(kConnectMs, [made = current()] {
            if (const auto still = made.lock()) {
                still->connectOnce();
            }
        });
    }
    return watch;
}

std::shared_ptr<JackWatch> JackWatch::ofProcessIfAny(RtMidi::Api api)
{
    return api == RtMidi::UNIX_JACK ? current().lock() : nullptr;
}

bool JackWatch::connectOnce()
{
    if (std::exchange(hasTriedToConnect, true)) {
        return client;
    }
    client = jack_client_open(kClientName, JackNoStartServer, nullptr);
    if (!client) {
        return false;
    }
    jack_set_process_callback(
        client,
        [](jack_nframes_t, void* self) {
            static_cast<JackWatch*>(self)->periodBegins();
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
    periodBegins();
    if (jack_activate(client) != 0) {
        jack_client_close(std::exchange(client, nullptr));
    }
    return client;
}

JackWatch::~JackWatch()
{
    if (client) {
        jack_client_close(client);
    }
}

void JackWatch::periodBegins()
{
    ++periodCount;
    lastPeriod = Clock::now().time_since_epoch().count();
}

bool JackWatch::hasRunLately() const
{
    return Clock::now() - Clock::time_point(Clock::duration(lastPeriod)) < kLately;
}

bool JackWatch::standsStill()
{
    if (!client || hasRunLately()) {
        isKnownToStandStill = false;
    } else if (!isKnownToStandStill) {
        isKnownToStandStill =
            !waitUntil(kStandsStillMs, [this] { return hasRunLately() || !serverAlive; });
    }
    return isKnownToStandStill && serverAlive;
}

bool JackWatch::waitForPeriods(std::uint32_t since, std::uint32_t count)
{
    if (!connectOnce()) {
        return true;
    }
    const auto havePassed = [&] { return periods() - since >= count; };
    return waitUntil(kStandsStillMs, [&] { return havePassed() || !serverAlive; }) && havePassed();
}

bool JackWatch::awaitQuietGraph()
{
    if (!connectOnce()) {
        return true;
    }
    if (!standsStill() && !waitForPeriods(periods(), 1)) {
        isKnownToStandStill = true;
    }
    if (standsStill()) {
        return false;
    }
    waitUntil(kQuietMs, [this] {
        const std::uint32_t since = changedAt; // Read first: the count is never behind it.
        return !serverAlive || periodCount - since >= kQuietPeriods;
    });
    return true;
}

void JackWatch::keep(std::shared_ptr<JackWatch> watch, std::shared_ptr<void> backEnd)
{
    kept().push_back({std::move(watch), std::move(backEnd)});
}

void JackWatch::requireAnswer()
{
    if (const auto watch = current().lock(); watch && watch->standsStill()) {
        throw RtMidiError("The JACK server does not answer.", RtMidiError::DRIVER_ERROR);
    }
    for (Kept& entry : kept()) {
        const QuietGraph quiet(entry.watch);
        entry.backEnd.reset();
    }
    kept().clear();
}
