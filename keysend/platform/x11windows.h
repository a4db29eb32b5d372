// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <vector>
#include <xcb/xproto.h>

class X11Connection;

// The applications' windows, as the window manager lists them; without its list, as they lie on the
// screen. A server that is lost or hung has no windows. The connection must outlive the object.
class X11Windows
{
public:
    explicit X11Windows(X11Connection& connection) : x11(connection) {}

    // The processes that own a window, each once, in no particular order.
    std::vector<pid_t> owners();

    // The window of this process that gets its keys: the active one if it belongs to the process,
    // else the topmost; XCB_NONE if the process has none. Asks the server which windows there are,
    // but whose they are only if these have changed since the last call.
    xcb_window_t keyWindow(pid_t process);

private:
    void findOwners(const std::vector<xcb_window_t>& ofWindows);

    X11Connection& x11;
    std::vector<xcb_window_t> windows; // From the bottom to the top, as last seen...
    std::vector<pid_t> pids;           // ...and their owners; 0: unknown, or on another machine.
};
