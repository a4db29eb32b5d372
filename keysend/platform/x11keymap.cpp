// SPDX-License-Identifier: MIT
#include "x11keymap.h"

#include "mackeys.h"
#include "x11connection.h"

#include <algorithm>
#include <utility>

namespace {

// Keysyms by their names in keysymdef.h of the X protocol.
constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kKeypadDecimal = 0xffae;

constexpr std::size_t kModifiers = 8; // Shift, Lock, Control, Mod1 to Mod5.
constexpr std::size_t kLevels = 2;    // Of the first group: the first keysyms of a keycode.

bool needsNumLock(xcb_keysym_t keysym)
{
    return keysym == kKeypadDecimal || (keysym >= kKeysymKeypad0 && keysym <= kKeysymKeypad9);
}

} // namespace

X11KeyMap::X11KeyMap(xcb_keycode_t firstKeycode, std::size_t keysymsPerKeycode,
                     std::vector<xcb_keysym_t> keysyms,
                     const std::vector<xcb_keycode_t>& modifierRows)
    : first(firstKeycode), perKeycode(keysymsPerKeycode), map(std::move(keysyms))
{
    const auto numLockKey = std::find_if(modifierRows.begin(), modifierRows.end(),
                                         [this](auto key) { return strokeAt(key, kNumLock); });
    if (numLockKey != modifierRows.end()) {
        const auto place = static_cast<std::size_t>(numLockKey - modifierRows.begin());
        numLock = static_cast<std::uint16_t>(1U << (place * kModifiers / modifierRows.size()));
    }
}

std::optional<X11KeyMap> X11KeyMap::read(X11Connection& connection)
{
    const xcb_keycode_t firstKeycode = connection.setup().min_keycode;
    const int count = connection.setup().max_keycode - firstKeycode + 1;
    const auto askKeys =
        xcb_get_keyboard_mapping(connection.xcb(), firstKeycode, static_cast<std::uint8_t>(count));
    const auto askModifiers = xcb_get_modifier_mapping(connection.xcb());
    const auto keys = connection.reply<xcb_get_keyboard_mapping_reply_t>(askKeys);
    const auto rows = connection.reply<xcb_get_modifier_mapping_reply_t>(askModifiers);
    if (!keys || !rows) {
        return std::nullopt;
    }
    const xcb_keysym_t* const keysyms = xcb_get_keyboard_mapping_keysyms(keys.get());
    const xcb_keycode_t* const codes = xcb_get_modifier_mapping_keycodes(rows.get());
    return X11KeyMap(firstKeycode, keys->keysyms_per_keycode,
                     {keysyms, keysyms + xcb_get_keyboard_mapping_keysyms_length(keys.get())},
                     {codes, codes + xcb_get_modifier_mapping_keycodes_length(rows.get())});
}

X11KeyMap::Stroke X11KeyMap::stroke(const MacKey& key) const
{
    auto found = strokeAt(key.usualKeycode, key.keysym);
    for (std::size_t keycode = first; !found && keycode <= UINT8_MAX; ++keycode) {
        found = strokeAt(keycode, key.keysym);
    }
    Stroke stroke = found.value_or(Stroke{key.usualKeycode, 0});
    if (numLock && needsNumLock(key.keysym)) {
        stroke.state = numLock;
    }
    return stroke;
}

// With Shift where the keysym is on the second level; none if it is on neither.
std::optional<X11KeyMap::Stroke> X11KeyMap::strokeAt(std::size_t keycode, xcb_keysym_t keysym) const
{
    for (std::size_t level = 0; level < std::min(kLevels, perKeycode); ++level) {
        const std::size_t index = (keycode - first) * perKeycode + level;
        if (keycode >= first && index < map.size() && map[index] == keysym) {
            return Stroke{static_cast<xcb_keycode_t>(keycode),
                          static_cast<std::uint16_t>(level == 1 ? XCB_MOD_MASK_SHIFT : 0)};
        }
    }
    return std::nullopt;
}
