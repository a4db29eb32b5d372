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

using Windows = std::vector<xcb_window_t>; // From the bottom to the top.

struct Desktop
{
    Windows windows;
    xcb_window_t active = XCB_NONE;
};

Windows childrenOf(const xcb_query_tree_reply_t* tree)
{
    if (!tree) {
        return {};
    }
    const xcb_window_t* const first = xcb_query_tree_children(tree);
    return {first, first + tree->children_len};
}

bool isViewable(const xcb_get_window_attributes_reply_t& window)
{
    return window.map_state == XCB_MAP_STATE_VIEWABLE &&
           window._class == XCB_WINDOW_CLASS_INPUT_OUTPUT;
}

// Whether a window has this WM_STATE because it is shown or iconic.
bool isMarked(const std::vector<std::uint32_t>& state, bool isSeen)
{
    constexpr std::uint32_t kNormalState = 1;
    constexpr std::uint32_t kIconicState = 3;
    return !state.empty() &&
           (state.front() == kIconicState || (state.front() == kNormalState && isSeen));
}

// The application's window of each of the root's children, if it has one. A window manager marks an
// application's window with WM_STATE (ICCCM, 4.1.3.1) and may have put it into a frame. Without a
// window manager the child itself is the application's.
Windows clientWindows(X11Connection& x11, const Windows& rootChildren)
{
    constexpr int kMaxDepth = 3; // Window managers have one or two frames round a window.
    struct Candidate
    {
        std::size_t place; // Of the root's child.
        xcb_window_t window;
        xcb_get_window_attributes_cookie_t askAttributes;
        xcb_get_property_cookie_t askState;
        xcb_query_tree_cookie_t askTree;
    };
    std::vector<Candidate> level;
    std::vector<Candidate> nextLevel;
    const auto ask = [&x11](std::size_t place, xcb_window_t window) {
        return Candidate{place, window, xcb_get_window_attributes(x11.xcb(), window),
                         x11.askNumbers(window, X11Connection::WmState),
                         xcb_query_tree(x11.xcb(), window)};
    };
    for (std::size_t place = 0; place < rootChildren.size(); ++place) {
        level.push_back(ask(place, rootChildren[place]));
    }
    Windows plain(rootChildren.size());
    Windows marked(rootChildren.size());
    for (int depth = 0; !level.empty(); ++depth) {
        nextLevel.clear();
        for (const Candidate& is : level) {
            const auto attributes = x11.reply<xcb_get_window_attributes_reply_t>(is.askAttributes);
            const auto state = x11.numbers(is.askState);
            const auto tree = x11.reply<xcb_query_tree_reply_t>(is.askTree);
            if (!attributes) {
                continue;
            }
            const bool isSeen = isViewable(*attributes);
            if (isMarked(state, isSeen)) {
                marked[is.place] = is.window;
            } else if (depth < kMaxDepth) {
                for (const xcb_window_t child : childrenOf(tree.get())) {
                    nextLevel.push_back(ask(is.place, child));
                }
            }
            if (depth == 0 && isSeen && !attributes->override_redirect) {
                plain[is.place] = is.window;
            }
        }
        level.swap(nextLevel);
    }
    std::transform(marked.begin(), marked.end(), plain.begin(), marked.begin(),
                   [](auto client, auto child) { return client ? client : child; });
    marked.erase(std::remove(marked.begin(), marked.end(), xcb_window_t(XCB_NONE)), marked.end());
    return marked;
}

Desktop readDesktop(X11Connection& x11)
{
    const auto ask = [&x11](X11Connection::Atom property) {
        return x11.askNumbers(x11.root(), property);
    };
    const auto askCheck = ask(X11Connection::SupportingWmCheck);
    const auto askStacking = ask(X11Connection::ClientListStacking);
    const auto askList = ask(X11Connection::ClientList);
    const auto askActive = ask(X11Connection::ActiveWindow);
    const auto askFocus = xcb_get_input_focus(x11.xcb());
    const auto askTree = xcb_query_tree(x11.xcb(), x11.root());
    const auto check = x11.numbers(askCheck);
    auto list = x11.numbers(askStacking);
    const auto unordered = x11.numbers(askList);
    const auto active = x11.numbers(askActive);
    const auto focus = x11.reply<xcb_get_input_focus_reply_t>(askFocus);
    const auto tree = x11.reply<xcb_query_tree_reply_t>(askTree);

    if (list.empty()) {
        list = unordered; // Of simple window managers.
    }
    // A window manager that was killed leaves its lists, but not the window that shows that it
    // lives.
    const bool isManaged =
        !check.empty() && !list.empty() &&
        x11.numbers(x11.askNumbers(check.front(), X11Connection::SupportingWmCheck)) == check;
    if (isManaged) {
        return {list, active.empty() ? xcb_window_t(XCB_NONE) : active.front()};
    }
    return {clientWindows(x11, childrenOf(tree.get())),
            focus ? focus->focus : xcb_window_t(XCB_NONE)};
}

// The processes of all clients on this machine, by the part of a window's id that names its client.
std::unordered_map<std::uint32_t, pid_t> readClientPids(X11Connection& x11)
{
    std::unordered_map<std::uint32_t, pid_t> pids;
    const auto* const extension = xcb_get_extension_data(x11.xcb(), &xcb_res_id);
    if (!extension || !extension->present) {
        return pids;
    }
    const xcb_res_client_id_spec_t all = {0, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids =
        x11.reply<xcb_res_query_client_ids_reply_t>(xcb_res_query_client_ids(x11.xcb(), 1, &all));
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

// The owner that the window itself names. Any client can claim anything, so this is asked only
// where the server does not know.
pid_t claimedOwner(X11Connection& x11, xcb_window_t window)
{
    const auto askPid = x11.askNumbers(window, X11Connection::WmPid);
    const auto askMachine = xcb_get_property(x11.xcb(), 0, window, XCB_ATOM_WM_CLIENT_MACHINE,
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, HOST_NAME_MAX);
    const auto pid = x11.numbers(askPid);
    const auto machine = x11.reply<xcb_get_property_reply_t>(askMachine);
    return pid.empty() || !isThisMachine(machine.get()) ? 0 : static_cast<pid_t>(pid.front());
}

} // namespace

std::vector<pid_t> X11Windows::owners()
{
    findOwners(readDesktop(x11).windows);
    std::vector<pid_t> found = pids;
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    found.erase(found.begin(), std::upper_bound(found.begin(), found.end(), 0));
    return found;
}

xcb_window_t X11Windows::keyWindow(pid_t process)
{
    const Desktop desktop = readDesktop(x11);
    if (desktop.windows != windows || std::find(pids.begin(), pids.end(), process) == pids.end()) {
        findOwners(desktop.windows);
    }
    xcb_window_t topmost = XCB_NONE;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        if (pids[i] == process) {
            if (windows[i] == desktop.active) {
                return windows[i];
            }
            topmost = windows[i];
        }
    }
    return topmost;
}

void X11Windows::findOwners(const std::vector<xcb_window_t>& ofWindows)
{
    const auto clientPids = readClientPids(x11);
    windows = ofWindows;
    pids.clear();
    for (const xcb_window_t window : windows) {
        const auto known = clientPids.find(window & ~x11.setup().resource_id_mask);
        pids.push_back(known == clientPids.end() ? claimedOwner(x11, window) : known->second);
    }
}
