// SPDX-License-Identifier: MIT
#include "windowping.h"

#include "report.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <cstring>
#include <memory>

#include <poll.h>
#include <xcb/xcb.h>

namespace {

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> owned(Reply* reply)
{
    return {reply, &std::free};
}

} // namespace

WindowPing::WindowPing() : server(xcb_connect(nullptr, nullptr))
{
    require(xcb_connection_has_error(server) == 0, QStringLiteral("the display cannot be reached"));
    root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    protocols = atom("WM_PROTOCOLS");
    ping = atom("_NET_WM_PING");
    // Answers are sent to the root window, and to those who select one of these events there.
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(server, root, XCB_CW_EVENT_MASK, &mask);
}

WindowPing::~WindowPing()
{
    xcb_disconnect(server);
}

int WindowPing::answerMs(std::uint32_t window, int limitMs)
{
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = protocols;
    event.data.data32[0] = ping;
    event.data.data32[1] = ++lastSerial;
    event.data.data32[2] = window;
    xcb_send_event(server, 0, window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&event));
    xcb_flush(server);
    QElapsedTimer waited;
    waited.start();
    while (!isAnswer(lastSerial)) {
        const auto leftMs = limitMs - static_cast<int>(waited.elapsed());
        if (leftMs <= 0 || xcb_connection_has_error(server) != 0) {
            return -1;
        }
        pollfd readable{xcb_get_file_descriptor(server), POLLIN, 0};
        poll(&readable, 1, leftMs);
    }
    return static_cast<int>(waited.elapsed());
}

std::uint32_t WindowPing::atom(const char* name)
{
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const auto reply =
        owned(xcb_intern_atom_reply(server, xcb_intern_atom(server, 0, length, name), nullptr));
    return reply ? reply->atom : 0;
}

// Takes what events there are, up to the answer.
bool WindowPing::isAnswer(std::uint32_t serial)
{
    while (const auto event = owned(xcb_poll_for_event(server))) {
        const auto* message = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
        if ((event->response_type & 0x7F) == XCB_CLIENT_MESSAGE && message->type == protocols &&
            message->data.data32[0] == ping && message->data.data32[1] == serial) {
            return true;
        }
    }
    return false;
}
