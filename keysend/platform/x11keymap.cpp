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
constexpr unsigned int kLevels = 2;   // Of the first group: the first keysyms of a keycode.

bool needsNumLock(xcb_keysym_t keysym)
{
    return keysym == kKeypadDecimal || (keysym >= kKeysymKeypad0 && keysym <= kKeysymKeypad9);
}

} // namespace

X11KeyMap::X11KeyMap(xcb_keycode_t firstKeycode, unsigned int keysymsPerKeycode,
                     std::vector<xcb_keysym_t> keysyms,
                     const std::vector<xcb_keycode_t>& modifierRows)
    : first(firstKeycode),
      perKeycode(keysymsPerKeycode),
      map(std::move(keysyms)),
      numLock(findNumLock(modifierRows))
{
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

std::optional<X11KeyMap::Stroke> X11KeyMap::stroke(xcb_keysym_t keysym) const
{
    const MacKey* const key = findMacKeyOfKeysym(keysym);
    if (!key) {
        return std::nullopt;
    }
    if (const auto level = levelOf(keysym, key->usualKeycode)) {
        return Stroke{key->usualKeycode, modifiers(keysym, *level)};
    }
    const std::size_t end = first + map.size() / std::max(perKeycode, 1U);
    for (std::size_t keycode = first; keycode < end; ++keycode) {
        const auto code = static_cast<xcb_keycode_t>(keycode);
        if (const auto level = levelOf(keysym, code)) {
            return Stroke{code, modifiers(keysym, *level)};
        }
    }
    return Stroke{key->usualKeycode, modifiers(keysym, 0)};
}

std::optional<int> X11KeyMap::levelOf(xcb_keysym_t keysym, xcb_keycode_t keycode) const
{
    for (unsigned int level = 0; level < std::min(kLevels, perKeycode); ++level) {
        const std::size_t index = std::size_t(keycode - first) * perKeycode + level;
        if (keycode >= first && index < map.size() && map[index] == keysym) {
            return static_cast<int>(level);
        }
    }
    return std::nullopt;
}

std::uint16_t X11KeyMap::modifiers(xcb_keysym_t keysym, int level) const
{
    if (needsNumLock(keysym) && numLock) {
        return numLock;
    }
    return level == 1 ? XCB_MOD_MASK_SHIFT : 0;
}

std::uint16_t X11KeyMap::findNumLock(const std::vector<xcb_keycode_t>& modifierRows) const
{
    const std::size_t perRow = modifierRows.size() / kModifiers;
    for (std::size_t i = 0; i < perRow * kModifiers; ++i) {
        if (levelOf(kNumLock, modifierRows[i])) {
            return static_cast<std::uint16_t>(1U << (i / perRow));
        }
    }
    return 0;
}
