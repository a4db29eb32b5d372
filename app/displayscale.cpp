// SPDX-License-Identifier: MIT
#include "displayscale.h"

#include <QByteArray>
#include <QGuiApplication>

#ifdef VELT_X11
#include <xcb/xcb.h>

#include <cmath>
#include <cstdlib>
#include <memory>

namespace {

constexpr double kDpiOfScaleOne = 96;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kTolerance = 0.02;
constexpr std::uint32_t kMostWords = 4096;

// False too where there is no X server.
bool isRoundedToOne()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> server(
        xcb_connect(nullptr, nullptr), xcb_disconnect);
    if (xcb_connection_has_error(server.get()) != 0) {
        return false;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(server.get())).data;
    const std::unique_ptr<xcb_get_property_reply_t, decltype(&std::free)> resources(
        xcb_get_property_reply(server.get(),
                               xcb_get_property(server.get(), 0, screen->root,
                                                XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 0,
                                                kMostWords),
                               nullptr),
        std::free);
    if (resources && QByteArray(static_cast<char*>(xcb_get_property_value(resources.get())),
                                xcb_get_property_value_length(resources.get()))
                         .contains("Xft.dpi")) {
        return false; // Set by the desktop.
    }
    const double dpi =
        screen->height_in_pixels * kMillimetresPerInch / screen->height_in_millimeters;
    return std::abs(dpi / kDpiOfScaleOne - 1) <= kTolerance;
}

} // namespace
#else
namespace {

bool isRoundedToOne()
{
    return false;
}

} // namespace
#endif

void useRealDisplayScale()
{
    if (!isRoundedToOne()) {
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    }
}
