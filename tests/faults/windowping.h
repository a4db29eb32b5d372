// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

struct xcb_connection_t;

// Asks windows of the display that DISPLAY names whether their programs still handle events, as
// window managers do: with _NET_WM_PING, which the toolkit answers from its event loop.
class WindowPing
{
public:
    WindowPing();
    ~WindowPing();
    WindowPing(const WindowPing&) = delete;
    WindowPing& operator=(const WindowPing&) = delete;

    // Milliseconds until the answer, and so until all events that came before have been handled; -1
    // if there was none in `limitMs`.
    int answerMs(std::uint32_t window, int limitMs);

private:
    std::uint32_t atom(const char* name);
    bool isAnswer(std::uint32_t serial);

    xcb_connection_t* server;
    std::uint32_t root = 0;
    std::uint32_t protocols = 0;
    std::uint32_t ping = 0;
    std::uint32_t lastSerial = 0;
};
