// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>
#include <xcb/xproto.h>

class X11Connection;

// Which key of the server's key map, with which modifiers, yields a keysym. A value: what the
// server said when it was read, and wrong from the next change on.
class X11KeyMap
{
public:
    struct Stroke
    {
        xcb_keycode_t keycode;
        std::uint16_t state; // Bits of Shift and of the modifier that Num_Lock is on.
    };

    // As GetKeyboardMapping and GetModifierMapping give them: so many keysyms for each keycode from
    // `firstKeycode` on, and the keycodes of the eight modifiers in rows of equal length.
    X11KeyMap(xcb_keycode_t firstKeycode, unsigned int keysymsPerKeycode,
              std::vector<xcb_keysym_t> keysyms, const std::vector<xcb_keycode_t>& modifierRows);

    // None if the server is lost or hung.
    static std::optional<X11KeyMap> read(X11Connection& connection);

    // The key's usual place if it holds the keysym there; else the first key that does; else, for
    // receivers that go by the place, the usual place all the same. Keypad digits and the keypad
    // point, which a key gives with Num Lock only, come with Num Lock. None if the keysym has no
    // usual place, as keys have that the program does not type.
    std::optional<Stroke> stroke(xcb_keysym_t keysym) const;

private:
    std::optional<int> levelOf(xcb_keysym_t keysym, xcb_keycode_t keycode) const;
    std::uint16_t modifiers(xcb_keysym_t keysym, int level) const;
    std::uint16_t findNumLock(const std::vector<xcb_keycode_t>& modifierRows) const;

    xcb_keycode_t first;
    unsigned int perKeycode;
    std::vector<xcb_keysym_t> map;
    std::uint16_t numLock; // The modifier's bit, 0 if no key sets it.
};
