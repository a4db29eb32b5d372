// SPDX-License-Identifier: MIT
#include "x11windows.h"

#include "x11connection.h"

#include <algorithm>
#include <climits>
#include <string_view>
#include <unistd.h>
#include <unordered_map>
#include <xcb/res.h>

namespace {

struct Desktop
{
    std::vector<xcb_window_t> windows; // From the bottom to the top.
    xcb_window_t active = XCB_NONE;
};

struct OwnedWindow
{
    xcb_window_t window;
    pid_t owner; // 0 if unknown, or on another machine.
};

using ClientPids = std::unordered_map<std::uint32_t, pid_t>;

// The root's children that a user sees and can type into.
std::vector<xcb_window_t> topLevelWindows(X11Connection& x11)
{
    const auto tree =
        x11.reply<xcb_query_tree_reply_t>(xcb_query_tree(x11.xcb(), x11.root()).sequence);
    if (!tree) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(tree.get());
    const std::vector<xcb_window_t> children(first, first + tree->children_len);
    std::vector<xcb_get_window_attributes_cookie_t> requests;
    requests.reserve(children.size());
    for (const xcb_window_t child : children) {
        requests.push_back(xcb_get_window_attributes(x11.xcb(), child));
    }
    std::vector<xcb_window_t> windows;
    for (std::size_t i = 0; i < children.size(); ++i) {
        const auto is = x11.reply<xcb_get_window_attributes_reply_t>(requests[i].sequence);
        if (is && is->map_state == XCB_MAP_STATE_VIEWABLE && !is->override_redirect &&
            is->_class == XCB_WINDOW_CLASS_INPUT_OUTPUT) {
            windows.push_back(children[i]);
        }
    }
    return windows;
}

// A window manager that was killed leaves its lists behind, but not its window, which alone shows
// that it lives.
bool isManaged(X11Connection& x11, const std::vector<xcb_window_t>& check)
{
    return !check.empty() &&
           x11.numbers(x11.askNumbers(check.front(), X11Connection::SupportingWmCheck,
                                      XCB_ATOM_WINDOW)) == check;
}

Desktop readDesktop(X11Connection& x11)
{
    const auto ask = [&x11](X11Connection::Atom property) {
        return x11.askNumbers(x11.root(), property, XCB_ATOM_WINDOW);
    };
    const auto askCheck = ask(X11Connection::SupportingWmCheck);
    const auto askStacking = ask(X11Connection::ClientListStacking);
    const auto askList = ask(X11Connection::ClientList);
    const auto askActive = ask(X11Connection::ActiveWindow);
    const auto askFocus = xcb_get_input_focus(x11.xcb());
    const auto check = x11.numbers(askCheck);
    const auto stacking = x11.numbers(askStacking);
    const auto list = x11.numbers(askList);
    const auto active = x11.numbers(askActive);
    const auto focus = x11.reply<xcb_get_input_focus_reply_t>(askFocus.sequence);

    if (isManaged(x11, check) && !(stacking.empty() && list.empty())) {
        // Simple window managers know no order; the active window is all they tell.
        return {stacking.empty() ? list : stacking,
                active.empty() ? xcb_window_t(XCB_NONE) : active.front()};
    }
    return {topLevelWindows(x11), focus ? focus->focus : xcb_window_t(XCB_NONE)};
}

// The processes of all clients on this machine, by the part of a window's id that names its client.
ClientPids readClientPids(X11Connection& x11)
{
    ClientPids pids;
    const auto* const extension = xcb_get_extension_data(x11.xcb(), &xcb_res_id);
    if (!extension || !extension->present) {
        return pids;
    }
    const xcb_res_client_id_spec_t all = {0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids = x11.reply<xcb_res_query_client_ids_reply_t>(
        xcb_res_query_client_ids(x11.xcb(), 1, &all).sequence);
    if (!ids) {
        return pids;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(ids.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (xcb_res_client_id_value_value_length(id.data) > 0) {
            pids[id.data->spec.client & ~x11.setup().resource_id_mask] =
                static_cast<pid_t>(xcb_res_client_id_value_value(id.data)[0]);
        }
    }
    return pids;
}

bool isThisMachine(const xcb_get_property_reply_t* property)
{
    if (!property || property->value_len == 0) {
        return true;
    }
    char name[HOST_NAME_MAX + 1] = {};
    gethostname(name, sizeof name - 1);
    return std::string_view(static_cast<const char*>(xcb_get_property_value(property)),
                            static_cast<std::size_t>(xcb_get_property_value_length(property))) ==
           name;
}

// What the window itself says about its owner: any client may say anything, so this is asked
// only where the server does not know.
pid_t claimedOwner(X11Connection& x11, xcb_window_t window)
{
    const auto askPid = x11.askNumbers(window, X11Connection::WmPid, XCB_ATOM_CARDINAL);
    const auto askMachine = xcb_get_property(x11.xcb(), 0, window, XCB_ATOM_WM_CLIENT_MACHINE,
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, HOST_NAME_MAX);
    const auto pid = x11.numbers(askPid);
    const auto machine = x11.reply<xcb_get_property_reply_t>(askMachine.sequence);
    return pid.empty() || !isThisMachine(machine.get()) ? 0 : static_cast<pid_t>(pid.front());
}

std::vector<OwnedWindow> withOwners(X11Connection& x11, const std::vector<xcb_window_t>& windows)
{
    const ClientPids pids = readClientPids(x11);
    std::vector<OwnedWindow> owned;
    owned.reserve(windows.size());
    for (const xcb_window_t window : windows) {
        const auto known = pids.find(window & ~x11.setup().resource_id_mask);
        owned.push_back({window, known == pids.end() ? claimedOwner(x11, window) : known->second});
    }
    return owned;
}

} // namespace

std::vector<pid_t> windowOwners(X11Connection& connection)
{
    std::vector<pid_t> owners;
    for (const OwnedWindow& owned : withOwners(connection, readDesktop(connection).windows)) {
        if (owned.owner > 0) {
            owners.push_back(owned.owner);
        }
    }
    std::sort(owners.begin(), owners.end());
    owners.erase(std::unique(owners.begin(), owners.end()), owners.end());
    return owners;
}

xcb_window_t keyWindow(X11Connection& connection, pid_t process)
{
    const Desktop desktop = readDesktop(connection);
    xcb_window_t topmost = XCB_NONE;
    for (const OwnedWindow& owned : withOwners(connection, desktop.windows)) {
        if (owned.owner == process) {
            if (owned.window == desktop.active) {
                return owned.window;
            }
            topmost = owned.window;
        }
    }
    return topmost;
}
