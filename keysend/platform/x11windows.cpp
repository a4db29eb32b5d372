// SPDX-License-Identifier: MIT
#include "x11windows.h"

#include "x11connection.h"

#include <algorithm>
#include <unordered_map>
#include <xcb/res.h>

namespace {

std::vector<xcb_window_t> childrenOf(const xcb_query_tree_reply_t* tree)
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

// The owner that the window itself names. Any client can claim anything, so this is asked only
// where the server does not know.
pid_t claimedOwner(X11Connection& x11, xcb_window_t window)
{
    const auto pid = x11.numbers(x11.askNumbers(window, X11Connection::WmPid));
    return pid.empty() ? 0 : static_cast<pid_t>(pid.front());
}

} // namespace

std::set<pid_t> X11Windows::owners()
{
    findOwners(readDesktop().windows);
    std::set<pid_t> found(pids.begin(), pids.end());
    found.erase(0);
    return found;
}

xcb_window_t X11Windows::keyWindow(pid_t process)
{
    const Desktop desktop = readDesktop();
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

void X11Windows::findOwners(const Windows& ofWindows)
{
    const auto clientPids = readClientPids(x11);
    windows = ofWindows;
    pids.clear();
    for (const xcb_window_t window : windows) {
        const auto known = clientPids.find(window & ~x11.setup().resource_id_mask);
        pids.push_back(known == clientPids.end() ? claimedOwner(x11, window) : known->second);
    }
}

X11Windows::Desktop X11Windows::readDesktop()
{
    using Atom = X11Connection::Atom;
    const xcb_window_t root = x11.root();
    const auto askRootCheck = x11.askNumbers(root, Atom::SupportingWmCheck);
    const auto askOwnCheck = x11.askNumbers(check, Atom::SupportingWmCheck);
    const auto askStacking = x11.askNumbers(root, Atom::ClientListStacking);
    const auto askActive = x11.askNumbers(root, Atom::ActiveWindow);
    const auto askFocus = xcb_get_input_focus(x11.xcb());
    const auto askTree = xcb_query_tree(x11.xcb(), root);
    const auto rootCheck = x11.numbers(askRootCheck);
    auto ownCheck = x11.numbers(askOwnCheck);
    const auto list = x11.numbers(askStacking);
    const auto active = x11.numbers(askActive);
    const auto focus = x11.reply<xcb_get_input_focus_reply_t>(askFocus);
    const auto tree = x11.reply<xcb_query_tree_reply_t>(askTree);

    // A window manager that was killed leaves its lists, but not the window that shows that it
    // lives.
    if (!rootCheck.empty() && rootCheck.front() != check) {
        check = rootCheck.front();
        ownCheck = x11.numbers(x11.askNumbers(check, Atom::SupportingWmCheck));
    }
    if (!list.empty() && !rootCheck.empty() && ownCheck == rootCheck) {
        return {list, active.empty() ? xcb_window_t(XCB_NONE) : active.front()};
    }
    return {clientWindows(childrenOf(tree.get())), focus ? focus->focus : xcb_window_t(XCB_NONE)};
}

// The application's window of each of the root's children, if it has one. A window manager marks an
// application's window with WM_STATE (ICCCM, 4.1.3.1) and may have put it into a frame. Without a
// window manager the child itself is the application's.
X11Windows::Windows X11Windows::clientWindows(const Windows& rootChildren)
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
    const auto ask = [this](std::size_t place, xcb_window_t window) {
        return Candidate{place, window, xcb_get_window_attributes(x11.xcb(), window),
                         x11.askNumbers(window, X11Connection::WmState),
                         xcb_query_tree(x11.xcb(), window)};
    };
    Windows clients(rootChildren.size());
    std::vector<Candidate> level;
    for (std::size_t place = 0; place < rootChildren.size(); ++place) {
        level.push_back(ask(place, rootChildren[place]));
    }
    for (int depth = 0; !level.empty(); ++depth) {
        std::vector<Candidate> nextLevel;
        for (const Candidate& is : level) {
            const auto attributes = x11.reply<xcb_get_window_attributes_reply_t>(is.askAttributes);
            const auto state = x11.numbers(is.askState);
            const auto tree = x11.reply<xcb_query_tree_reply_t>(is.askTree);
            const bool isSeen = attributes && isViewable(*attributes);
            const bool isClient = isMarked(state, isSeen);
            if (isClient || (depth == 0 && isSeen && !attributes->override_redirect)) {
                clients[is.place] = is.window;
            }
            if (!isClient && depth < kMaxDepth) {
                for (const xcb_window_t child : childrenOf(tree.get())) {
                    nextLevel.push_back(ask(is.place, child));
                }
            }
        }
        level.swap(nextLevel);
    }
    clients.erase(std::remove(clients.begin(), clients.end(), xcb_window_t(XCB_NONE)),
                  clients.end());
    return clients;
}
