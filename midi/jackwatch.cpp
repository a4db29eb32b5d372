// SPDX-License-Identifier: MIT
#include "jackwatch.h"

#include <QDeadlineTimer>
#include <QThread>

#include <jack/jack.h>

#include <utility>
#include <vector>

namespace {

constexpr auto kClientName = "VELT watch";
constexpr std::chrono::milliseconds kLately{500}; // Periods are shorter, 186 ms at most.
constexpr std::chrono::milliseconds kPeriodsTimeout{1000};
constexpr std::chrono::milliseconds kQuietTimeout{300};
constexpr std::uint32_t kQuietPeriods = 2;

// A period is some milliseconds.
template <class Condition>
void waitUntil(std::chrono::milliseconds timeout, Condition condition)
{
    for (const QDeadlineTimer end(timeout); !condition() && !end.hasExpired();) {
        QThread::msleep(1);
    }
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
    }
    return watch;
}

std::shared_ptr<JackWatch> JackWatch::ofProcessIfAny(RtMidi::Api api)
{
    return api == RtMidi::UNIX_JACK ? current().lock() : nullptr;
}

JackWatch::JackWatch() : connecting(std::async(std::launch::async, &JackWatch::connect, this))
{
}

void JackWatch::connect()
{
    client = jack_client_open(kClientName, JackNoStartServer, nullptr);
    if (!client) {
        return;
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
}

bool JackWatch::isConnecting() const
{
    return connecting.valid() &&
           connecting.wait_for(std::chrono::seconds(0)) != std::future_status::ready;
}

bool JackWatch::isConnected()
{
    if (connecting.valid()) {
        connecting.get();
    }
    return client;
}

JackWatch::~JackWatch()
{
    if (isConnected()) {
        jack_client_close(client);
    }
}

void JackWatch::periodBegins()
{
    ++periodCount;
    lastPeriod = Clock::now().time_since_epoch().count();
}

std::chrono::milliseconds JackWatch::sinceLastPeriod() const
{
    const Clock::time_point last{Clock::duration(lastPeriod)};
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - last);
}

bool JackWatch::standsStill(std::chrono::milliseconds patience)
{
    if (isConnecting() || !isConnected()) {
        return false;
    }
    waitUntil(patience, [&] {
        return !serverAlive || sinceLastPeriod() < kLately || sinceLastPeriod() >= patience;
    });
    return serverAlive && sinceLastPeriod() >= patience;
}

bool JackWatch::waitForPeriods(std::uint32_t since, std::uint32_t count)
{
    if (!isConnected()) {
        return true;
    }
    const auto havePassed = [&] { return periods() - since >= count; };
    waitUntil(kPeriodsTimeout, [&] { return havePassed() || !serverAlive; });
    return havePassed();
}

bool JackWatch::awaitQuietGraph()
{
    if (!isConnected()) {
        return true;
    }
    const std::uint32_t now = periods();
    waitUntil(kPatience,
              [&] { return !serverAlive || periods() != now || sinceLastPeriod() >= kPatience; });
    if (serverAlive && periods() == now) {
        return false;
    }
    waitUntil(kQuietTimeout, [this] {
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
    if (const auto watch = current().lock(); watch && watch->standsStill(kPatience)) {
        throw RtMidiError("The JACK server does not answer.", RtMidiError::DRIVER_ERROR);
    }
    for (Kept& entry : kept()) {
        const QuietGraph quiet(entry.watch);
        entry.backEnd.reset();
    }
    kept().clear();
}
