// SPDX-License-Identifier: MIT
// The program, as a process, from its start to its first paint, and the memory it takes for that;
// the floor is a process with a bare window.
#include "benchmarks.h"
#include "comparison.h"
#include "midipeer.h"
#include "shows.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPoint>
#include <QProcess>
#include <QTemporaryDir>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <optional>
#include <stdexcept>
#include <unistd.h>

namespace {

constexpr Target kTimeTarget{1.1};
constexpr Target kMemoryTarget{1, 10};
constexpr int kStarts = 21;
constexpr int kEntries = 1000;
constexpr qint64 kPatienceMs = 30'000;
constexpr unsigned int kLookIntervalUs = 200;
constexpr QPoint kMargin{2, 400};

template <typename Reply>
std::unique_ptr<Reply, void (*)(void*)> owned(Reply* reply)
{
    return {reply, std::free};
}

// Sees what a user sees: windows that appear on a screen without a window manager.
class Observer
{
public:
    Observer();
    ~Observer() { xcb_disconnect(server); }
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    xcb_window_t awaitPaintedWindow();
    void close(xcb_window_t window);

private:
    bool isPainted(xcb_window_t window);
    xcb_atom_t atom(const QByteArray& name);

    xcb_connection_t* server = xcb_connect(nullptr, nullptr);
};

Observer::Observer()
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(server, root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(server);
}

xcb_window_t Observer::awaitPaintedWindow()
{
    xcb_window_t window = XCB_NONE;
    QElapsedTimer waited;
    waited.start();
    while (!waited.hasExpired(kPatienceMs)) {
        while (const auto event = owned(xcb_poll_for_event(server))) {
            if ((event->response_type & 0x7F) == XCB_MAP_NOTIFY) {
                window = reinterpret_cast<xcb_map_notify_event_t*>(event.get())->window;
            }
        }
        if (window != XCB_NONE && isPainted(window)) {
            return window;
        }
        usleep(kLookIntervalUs);
    }
    throw std::runtime_error("no window appeared");
}

// By its left margin, where there is nothing but background; what nobody has painted yet is black,
// as the screen.
bool Observer::isPainted(xcb_window_t window)
{
    const auto pixel =
        owned(xcb_get_image_reply(server,
                                  xcb_get_image(server, XCB_IMAGE_FORMAT_Z_PIXMAP, window,
                                                kMargin.x(), kMargin.y(), 1, 1, ~0U),
                                  nullptr));
    const std::uint8_t* const bytes = pixel ? xcb_get_image_data(pixel.get()) : nullptr;
    return bytes && (bytes[0] != 0 || bytes[1] != 0 || bytes[2] != 0);
}

xcb_atom_t Observer::atom(const QByteArray& name)
{
    return owned(xcb_intern_atom_reply(
                     server,
                     xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name),
                     nullptr))
        ->atom;
}

// As a window manager does when its close button is pressed (ICCCM, WM_DELETE_WINDOW).
void Observer::close(xcb_window_t window)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(server, 0, window, 0, reinterpret_cast<const char*>(&event));
    xcb_flush(server);
}

double peakMb(qint64 process)
{
    QFile status(QString("/proc/%1/status").arg(process));
    status.open(QIODevice::ReadOnly);
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmHWM:")) {
            return line.simplified().split(' ').at(1).toDouble() / 1024;
        }
    }
    throw std::runtime_error("no peak memory is known");
}

struct Start
{
    double ms;
    double mb;
};

Start start(const QString& program, const QProcessEnvironment& environment)
{
    Observer observer;
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, QStringList());
    const xcb_window_t window = observer.awaitPaintedWindow();
    const double ms = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    const double mb = peakMb(process.processId());
    observer.close(window);
    process.waitForFinished();
    return {ms, mb};
}

struct Starts
{
    Comparison ms;
    Comparison mb;
};

// What the program finds when it starts.
struct Place
{
    std::string name; // Behind that of the measurement.
    QString midiServer;
    bool hasPorts = false; // And has chosen them: a DAW's output, for both inputs, and its input.
    std::optional<Target> time;
};

Starts measureStarts(const Place& place)
{
    const QTemporaryDir configHome;
    EditData data = showsOf(kEntries);
    std::unique_ptr<PeerSource> source;
    std::unique_ptr<PeerSink> sink;
    if (place.hasPorts) {
        source = std::make_unique<PeerSource>();
        sink = std::make_unique<PeerSink>();
        data.MidiInPort = data.ShortcutMidiInPort = PeerSource::port();
        data.MidiOutPort = PeerSink::port();
    }
    data.writeEdit(configHome.filePath("VELT/VELTSetting.ini"));
    data.writePreference(configHome.filePath("VELT/VELTPreference.ini"));
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", configHome.path());
    environment.insert("JACK_DEFAULT_SERVER", place.midiServer);
    Starts starts;
    for (int i = 0; i < kStarts; ++i) {
        const Start ours = start(VELT_PROGRAM, environment);
        const Start floor = start(VELT_BARE_WINDOW, environment);
        starts.ms.ours(ours.ms);
        starts.ms.floor(floor.ms);
        starts.mb.ours(ours.mb);
        starts.mb.floor(floor.mb);
    }
    return starts;
}

// Starts once for both lines of the table.
void addStarts(const Place& place)
{
    const auto starts = std::make_shared<std::optional<Starts>>();
    const auto measured = [=]() -> const Starts& {
        if (!*starts) {
            *starts = measureStarts(place);
        }
        return **starts;
    };
    add("start to first paint" + place.name + " (ms)",
        [=](benchmark::State& state) { measured().ms.report(state, place.time); });
    add("peak memory by then" + place.name + " (MB)",
        [=](benchmark::State& state) { measured().mb.report(state, kMemoryTarget); });
}

} // namespace

void addStartup()
{
    const QString server = qEnvironmentVariable("JACK_DEFAULT_SERVER");
    addStarts({"", server, false, kTimeTarget});
    addStarts({", three ports open", server, true, kTimeTarget});
    addStarts({", no MIDI server", "none", false, std::nullopt});
}
