// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>
#include <vector>
#include <xcb/xproto.h>

class X11Connection;

// The applications' windows, as the window manager lists them, or without one as they lie on the
// screen. Each call asks the server anew; where it is lost or hung there are no windows.

// The processes that own a window, each once, in no particular order.
std::vector<pid_t> windowOwners(X11Connection& connection);

// The window of this process to which its keys go: the active one if it is of this process, else
// the topmost; XCB_NONE if the process has none.
xcb_window_t keyWindow(X11Connection& connection, pid_t process);
