// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

struct FreeReply
{
    void operator()(void* reply) const { std::free(reply); }
};
template <class Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

// One connection to the X server that DISPLAY names, apart from the toolkit's. It lives until the
// server is lost and is useless then: make a new one. The program lives on.
//
// A server that does not answer within a second counts as hung. From then on requests fail at
// once, so that the caller waits once and not once a request, until the server answers again.
// (Connecting to a server that hangs already does wait for it.)
//
// Main thread only. Broken pipes are ignored for the whole process from the first connection on,
// unless the program handles SIGPIPE itself: a dying server must not end it.
class X11Connection
{
public:
    enum State { Working, Hung, Lost };
    enum Atom { SupportingWmCheck, ClientList, ClientListStacking, ActiveWindow, WmPid };
    static constexpr int kAtoms = WmPid + 1;

    X11Connection();

    // The state by what the server has sent so far; does not wait. Lost from the start if there is
    // no server. Everything below needs a connection that was not lost from the start.
    State state();

    xcb_connection_t* xcb() const { return connection.get(); }
    const xcb_setup_t& setup() const { return *xcb_get_setup(connection.get()); }
    xcb_window_t root() const { return rootWindow; }

    // The reply to the request of this sequence number; none if the request failed, or the server
    // is lost or hung.
    template <class Reply>
    X11Reply<Reply> reply(unsigned int sequence)
    {
        return X11Reply<Reply>(static_cast<Reply*>(await(sequence)));
    }
    // Whether the server has carried out a checked request that has no reply.
    bool isDone(xcb_void_cookie_t request);

    // Asks for a property that is a list of 32-bit values of this type, and takes the answer: empty
    // if there is no such property of that type, or no such window.
    xcb_get_property_cookie_t askNumbers(xcb_window_t window, Atom property, xcb_atom_t type);
    std::vector<std::uint32_t> numbers(xcb_get_property_cookie_t request);

    // Whether the server's key map has changed since the last call, as of the last reply.
    bool takeKeyMapChange();

private:
    struct Disconnect
    {
        void operator()(xcb_connection_t* c) const { xcb_disconnect(c); }
    };

    bool internAtoms();
    void* await(unsigned int sequence);
    bool takeReply(unsigned int sequence, X11Reply<void>& reply);
    void readEvents();

    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    xcb_window_t rootWindow = XCB_NONE;
    xcb_atom_t atoms[kAtoms] = {};
    bool isReady = false; // The server was there and gave the atoms.
    bool isKeyMapChanged = false;
    std::optional<unsigned int> unanswered; // The request on which the server was found hung.
};
