// SPDX-License-Identifier: MIT
#include "x11connection.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <poll.h>
#include <string_view>
#include <xcb/res.h>
#include <xcb/xcbext.h>

namespace {

using namespace std::chrono_literals;

constexpr auto kAnswerTime = 1000ms;
constexpr std::uint32_t kMaxNumbers = 65536;

// In the order of X11Connection::Atom.
constexpr std::array<std::string_view, X11Connection::kAtoms> kAtomNames = {
    "_NET_SUPPORTING_WM_CHECK", "_NET_CLIENT_LIST_STACKING", "_NET_ACTIVE_WINDOW", "_NET_WM_PID",
    "WM_STATE"};

void ignoreBrokenPipes()
{
    struct sigaction current = {};
    sigaction(SIGPIPE, nullptr, &current);
    if (current.sa_handler == SIG_DFL) {
        std::signal(SIGPIPE, SIG_IGN);
    }
}

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number) {
        xcb_screen_next(&screens);
    }
    return screens.data;
}

} // namespace

X11Connection::X11Connection() : connection(nullptr, xcb_disconnect)
{
    ignoreBrokenPipes();
    int screen = 0;
    connection.reset(xcb_connect(nullptr, &screen));
    if (xcb_connection_has_error(xcb())) {
        return;
    }
    rootWindow = screenOf(xcb(), screen)->root;
    xcb_prefetch_extension_data(xcb(), &xcb_res_id);
    xcb_intern_atom_cookie_t requests[kAtoms];
    std::transform(kAtomNames.begin(), kAtomNames.end(), requests, [this](auto name) {
        return xcb_intern_atom(xcb(), 0, static_cast<std::uint16_t>(name.size()), name.data());
    });
    std::transform(std::begin(requests), std::end(requests), atoms, [this](auto request) {
        const auto atom = reply<xcb_intern_atom_reply_t>(request);
        return atom ? atom->atom : xcb_atom_t(XCB_ATOM_NONE);
    });
}

X11Connection::State X11Connection::state()
{
    // What came before the end of the connection must be read first.
    do {
        readEvents();
    } while (!xcb_connection_has_error(xcb()) && hasInput(0));
    if (!atoms[kAtoms - 1] || xcb_connection_has_error(xcb())) {
        return Lost;
    }
    X11Reply<void> late;
    if (unanswered && takeReply(*unanswered, late)) {
        unanswered.reset();
    }
    return unanswered ? Hung : Working;
}

// The server works in order: with the reply to a later request, the outcome of this one is known.
X11Connection::Outcome X11Connection::send(xcb_void_cookie_t request)
{
    const auto later = xcb_get_input_focus(xcb());
    xcb_flush(xcb());
    return {request, later};
}

bool X11Connection::isDone(Outcome outcome)
{
    if (!reply<xcb_get_input_focus_reply_t>(outcome.later)) {
        xcb_discard_reply(xcb(), outcome.request.sequence);
        return false;
    }
    const X11Reply<xcb_generic_error_t> error(xcb_request_check(xcb(), outcome.request));
    return !error;
}

xcb_get_property_cookie_t X11Connection::askNumbers(xcb_window_t window, Atom property)
{
    return xcb_get_property(xcb(), 0, window, atoms[property], XCB_GET_PROPERTY_TYPE_ANY, 0,
                            kMaxNumbers);
}

std::vector<std::uint32_t> X11Connection::numbers(xcb_get_property_cookie_t request)
{
    const auto property = reply<xcb_get_property_reply_t>(request);
    if (!property || property->format != 32) {
        return {};
    }
    const auto* const first =
        static_cast<const std::uint32_t*>(xcb_get_property_value(property.get()));
    return {first, first + property->value_len};
}

void* X11Connection::await(unsigned int sequence)
{
    if (unanswered) {
        xcb_discard_reply(xcb(), sequence);
        return nullptr;
    }
    xcb_flush(xcb());
    const auto end = std::chrono::steady_clock::now() + kAnswerTime;
    X11Reply<void> reply;
    for (;;) {
        if (takeReply(sequence, reply)) {
            return reply.release();
        }
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            unanswered = sequence;
            return nullptr;
        }
        if (hasInput(static_cast<int>(left.count()))) {
            readEvents();
        }
    }
}

bool X11Connection::hasInput(int withinMs)
{
    pollfd socket = {xcb_get_file_descriptor(xcb()), POLLIN, 0};
    return ::poll(&socket, 1, withinMs) > 0;
}

// Whether the request has had its outcome, a failure or the loss of the server included; `reply`
// is empty then. Does not wait and does not read from the server.
bool X11Connection::takeReply(unsigned int sequence, X11Reply<void>& reply)
{
    void* taken = nullptr;
    xcb_generic_error_t* error = nullptr;
    const bool hasOutcome = xcb_poll_for_reply(xcb(), sequence, &taken, &error) != 0;
    const X11Reply<xcb_generic_error_t> dropped(error);
    reply.reset(taken);
    return hasOutcome;
}

// Reads what the server has sent, replies included. The only event that comes unasked for is the
// change of a mapping.
void X11Connection::readEvents()
{
    while (const auto event = X11Reply<xcb_generic_event_t>(xcb_poll_for_event(xcb()))) {
        if ((event->response_type & 0x7fU) == XCB_MAPPING_NOTIFY) {
            isKeyMapChanged = true;
        }
    }
}
