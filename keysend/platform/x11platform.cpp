// SPDX-License-Identifier: MIT
// The process and posting calls of macevents.h over X11. A process is one that owns a window of the
// X server; its ProcessSerialNumber is its process id (low half) with its start time (high half),
// so that a later process of the same id is not mistaken for it. Where there is no X server, no
// process is found and events are lost.
#include "cfobjects.h"
#include "mackeys.h"
#include "processinfo.h"
#include "x11connection.h"
#include "x11keymap.h"
#include "x11windows.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <unistd.h>

namespace {

struct Session
{
    X11Connection connection;
    X11Windows windows{connection};
    std::optional<X11KeyMap> keyMap; // Read at the first key and after changes.

    // The last press: into which window, and whether it arrived.
    xcb_window_t pressedWindow = XCB_NONE;
    X11Connection::Outcome pressed{};
};

// Connected at first use and after the server was lost; null if there is no server or it hangs.
Session* session()
{
    static std::unique_ptr<Session> current;
    auto state = current ? current->connection.state() : X11Connection::Lost;
    if (state == X11Connection::Lost) {
        current = std::make_unique<Session>();
        state = current->connection.state();
    }
    return state == X11Connection::Working ? current.get() : nullptr;
}

pid_t pidOf(const ProcessSerialNumber& process)
{
    return static_cast<pid_t>(process.lowLongOfPSN);
}

ProcessSerialNumber handleOf(pid_t pid)
{
    return {static_cast<UInt32>(processStartTime(pid)), static_cast<UInt32>(pid)};
}

bool isSame(const ProcessSerialNumber& one, const ProcessSerialNumber& other)
{
    return one.lowLongOfPSN == other.lowLongOfPSN && one.highLongOfPSN == other.highLongOfPSN;
}

bool isRunning(const ProcessSerialNumber& process)
{
    return isSame(handleOf(pidOf(process)), process);
}

// In the order of their start, as macOS lists them: which of two applications of one name comes
// first does not depend on which was clicked last.
std::vector<ProcessSerialNumber> findProcesses()
{
    std::vector<ProcessSerialNumber> found;
    if (Session* const current = session()) {
        const auto pids = current->windows.owners();
        std::transform(pids.begin(), pids.end(), std::back_inserter(found), handleOf);
    }
    std::stable_sort(found.begin(), found.end(), [](const auto& one, const auto& other) {
        return one.highLongOfPSN < other.highLongOfPSN;
    });
    return found;
}

// The server's clock in milliseconds, later at every call: receivers take a press at the time of
// the release before it for auto-repeat.
xcb_timestamp_t nextTime()
{
    static std::int64_t last = 0;
    const std::chrono::milliseconds now = std::chrono::duration_cast<std::chrono::milliseconds>(
        std::chrono::steady_clock::now().time_since_epoch());
    last = std::max<std::int64_t>(last + 1, now.count());
    return static_cast<xcb_timestamp_t>(last); // It wraps after 49 days, as the server's does.
}

// The stroke by the key map as of the last reply; none for a key that the program does not type.
std::optional<X11KeyMap::Stroke> strokeOf(Session& current, const __CGEvent& event)
{
    if (current.connection.takeKeyMapChange() || !current.keyMap) {
        current.keyMap = X11KeyMap::read(current.connection);
    }
    const MacKey* const key = findMacKey(event.key);
    if (!key || !current.keyMap) {
        return std::nullopt;
    }
    auto stroke = current.keyMap->stroke(*key);
    if (event.flags & kCGEventFlagMaskCommand) {
        stroke.state |= XCB_MOD_MASK_CONTROL; // What applications have here for Command.
    }
    return stroke;
}

// Sends the message; the outcome can be asked of a press only.
xcb_void_cookie_t post(const X11Connection& x11, xcb_window_t window, X11KeyMap::Stroke stroke,
                       bool isDown)
{
    xcb_key_press_event_t message = {};
    message.response_type = isDown ? XCB_KEY_PRESS : XCB_KEY_RELEASE;
    message.detail = stroke.keycode;
    message.time = nextTime();
    message.root = x11.root();
    message.event = window;
    message.state = stroke.state;
    message.same_screen = 1;
    // Without an event mask the message goes to the client that made the window, whatever that
    // client has selected.
    const auto send = isDown ? xcb_send_event_checked : xcb_send_event;
    return send(x11.xcb(), 0, window, XCB_EVENT_MASK_NO_EVENT,
                reinterpret_cast<const char*>(&message));
}

void press(Session& current, const ProcessSerialNumber& receiver, X11KeyMap::Stroke stroke)
{
    current.pressedWindow =
        isRunning(receiver) ? current.windows.keyWindow(pidOf(receiver)) : xcb_window_t(XCB_NONE);
    if (current.pressedWindow) {
        const auto request = post(current.connection, current.pressedWindow, stroke, true);
        current.pressed = current.connection.send(request);
    }
}

// A release goes to the window that got the press, even if another is active by now. Whether the
// press arrived is known without waiting only now. If its window had closed, the process may have
// another.
void release(Session& current, const ProcessSerialNumber& receiver, X11KeyMap::Stroke stroke)
{
    if (current.pressedWindow && !current.connection.isDone(current.pressed)) {
        press(current, receiver, stroke);
    }
    if (current.pressedWindow) {
        post(current.connection, current.pressedWindow, stroke, false);
        xcb_flush(current.connection.xcb());
        current.pressedWindow = XCB_NONE;
    }
}

} // namespace

bool mayPostEvents()
{
    return session() != nullptr;
}

OSErr GetCurrentProcess(ProcessSerialNumber* process)
{
    *process = handleOf(getpid());
    return noErr;
}

OSErr GetNextProcess(ProcessSerialNumber* process)
{
    static std::vector<ProcessSerialNumber> processes; // Of the enumeration under way.
    static std::size_t next = 0;
    if (process->lowLongOfPSN == kNoProcess) {
        processes = findProcesses();
        next = 0;
    }
    if (next == processes.size()) {
        return procNotFound;
    }
    *process = processes[next];
    ++next;
    return noErr;
}

OSErr SameProcess(const ProcessSerialNumber* one, const ProcessSerialNumber* other, Boolean* result)
{
    *result = isSame(*one, *other);
    return noErr;
}

OSStatus CopyProcessName(const ProcessSerialNumber* process, CFStringRef* name)
{
    const QByteArray found = processName(pidOf(*process));
    if (found.isEmpty() || !isRunning(*process)) {
        return procNotFound;
    }
    *name = new __CFString(found);
    return noErr;
}

void CGEventPostToPSN(void* process, CGEventRef event)
{
    const auto& receiver = *static_cast<const ProcessSerialNumber*>(process);
    Session* const current = session();
    const auto stroke = current ? strokeOf(*current, *event) : std::nullopt;
    if (!stroke) {
        return;
    }
    if (event->isDown) {
        press(*current, receiver, *stroke);
    } else {
        release(*current, receiver, *stroke);
    }
}
