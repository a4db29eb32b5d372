// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <utility>
#include <vector>
#include <xcb/xcb.h>

struct FreeReply
{
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

// A connection to the X server that DISPLAY names, apart from Qt's. When the server is lost, the
// program goes on and needs a new connection.
//
// A server that does not answer within a second counts as hung. Until it answers again, requests
// fail at once: the caller waits once, not once a request. (Connecting to a hung server does wait.)
//
// Main thread only. Ignores SIGPIPE for the whole process unless the program handles it: a dying
// server must not end the program.
class X11Connection
{
public:
    enum State { Working, Hung, Lost };
    enum Atom { SupportingWmCheck, ClientListStacking, ActiveWindow, WmPid, WmState };
    static constexpr int kAtoms = WmState + 1;

    X11Connection();

    // The state by what the server has sent so far; does not wait. Lost from the start if there is
    // no server. Everything below needs a connection that was not lost from the start.
    State state();

    xcb_connection_t* xcb() const { return connection.get(); }
    const xcb_setup_t& setup() const { return *xcb_get_setup(xcb()); }
    xcb_window_t root() const { return rootWindow; }

    // The reply to a request; none if the request failed, or the server is lost or hung.
    template <class Reply, class Cookie>
    X11Reply<Reply> reply(Cookie request)
    {
        return X11Reply<Reply>(static_cast<Reply*>(await(request.sequence)));
    }

    // Sends a checked request that has no reply; isDone() waits for its outcome, once, and is false
    // if the request failed, or the server is lost or hung.
    struct Outcome
    {
        xcb_void_cookie_t request;
        xcb_get_input_focus_cookie_t later;
    };
    Outcome send(xcb_void_cookie_t request);
    bool isDone(Outcome outcome);

    // Asks for a property that is a list of 32-bit values, and takes the answer: empty if there is
    // no such property or window.
    xcb_get_property_cookie_t askNumbers(xcb_window_t window, Atom property);
    std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t request);

    // Whether the server's key map has changed since the last call, as of the last reply.
    bool takeKeyMapChange() { return std::exchange(isKeyMapChanged, false); }

private:
    void* await(unsigned int sequence);
    bool takeReply(unsigned int sequence, X11Reply<void>& reply);
    bool hasInput(int withinMs);
    void readEvents();

    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection;
    xcb_window_t rootWindow = XCB_NONE;
    xcb_atom_t atoms[kAtoms] = {}; // The last is known once all are.
    bool isKeyMapChanged = false;
    std::optional<unsigned int> unanswered; // The request on which the server was found hung.
};
