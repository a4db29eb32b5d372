// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <vector>
#include <xcb/xproto.h>

struct MacKey;
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

    // As GetKeyboardMapping and GetModifierMapping give them: this many keysyms for each keycode
    // from `firstKeycode` on, and the keycodes of the eight modifiers in rows of equal length.
    X11KeyMap(xcb_keycode_t firstKeycode, std::size_t keysymsPerKeycode,
              std::vector<xcb_keysym_t> keysyms, const std::vector<xcb_keycode_t>& modifierRows);

    // None if the server is lost or hung.
    static std::optional<X11KeyMap> read(X11Connection& connection);

    // The key's usual place if it holds the keysym there; else the first key that does; else, for
    // receivers that go by the place, the usual place all the same. Keypad digits and the keypad
    // point, which a key gives with Num Lock only, come with Num Lock.
    Stroke stroke(const MacKey& key) const;

private:
    std::optional<Stroke> strokeAt(std::size_t keycode, xcb_keysym_t keysym) const;

    std::size_t first;
    std::size_t perKeycode;
    std::vector<xcb_keysym_t> map;
    std::uint16_t numLock = 0; // The modifier's bit, 0 if no key sets it.
};
