// SPDX-License-Identifier: MIT
#pragma once

#include <set>
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

    // The processes that own a window.
    std::set<pid_t> owners();

    // The window of this process that gets its keys: the active one if it belongs to the process,
    // else the topmost; XCB_NONE if the process has none. Asks the server which windows there are,
    // but whose they are only if these have changed since the last call.
    xcb_window_t keyWindow(pid_t process);

private:
    using Windows = std::vector<xcb_window_t>; // From the bottom to the top.
    struct Desktop
    {
        Windows windows;
        xcb_window_t active;
    };

    Desktop readDesktop();
    Windows clientWindows(const Windows& rootChildren);
    void findOwners(const Windows& ofWindows);

    X11Connection& x11;
    xcb_window_t check = XCB_NONE; // Of the window manager, as last seen.
    Windows windows;               // As last seen...
    std::vector<pid_t> pids;       // ...and their owners; 0 if unknown.
};
