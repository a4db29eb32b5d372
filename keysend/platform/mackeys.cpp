// SPDX-License-Identifier: MIT
#include "mackeys.h"

#include <algorithm>
#include <array>

namespace {

struct KeyPair
{
    int macKey;
    std::uint32_t keysym;
};

constexpr std::array kKeys = {
    KeyPair{0x11, 0x0074}, // XK_t
    KeyPair{0x24, 0xff0d}, // XK_Return
    KeyPair{0x29, 0x003b}, // XK_semicolon
    KeyPair{0x30, 0xff09}, // XK_Tab
    KeyPair{0x31, 0x0020}, // XK_space
    KeyPair{0x41, 0xffae}, // XK_KP_Decimal
    KeyPair{0x4c, 0xff8d}, // XK_KP_Enter
    KeyPair{0x51, 0xffbd}, // XK_KP_Equal
    KeyPair{0x52, 0xffb0}, // XK_KP_0
    KeyPair{0x53, 0xffb1}, // XK_KP_1
    KeyPair{0x54, 0xffb2}, // XK_KP_2
    KeyPair{0x55, 0xffb3}, // XK_KP_3
    KeyPair{0x56, 0xffb4}, // XK_KP_4
    KeyPair{0x57, 0xffb5}, // XK_KP_5
    KeyPair{0x58, 0xffb6}, // XK_KP_6
    KeyPair{0x59, 0xffb7}, // XK_KP_7
    KeyPair{0x5b, 0xffb8}, // XK_KP_8, as no digit is 0x5a
    KeyPair{0x5c, 0xffb9}, // XK_KP_9
};

} // namespace

std::optional<std::uint32_t> keysymForMacKey(int macKey)
{
    const auto* const found = std::find_if(
        kKeys.begin(), kKeys.end(), [macKey](const KeyPair& key) { return key.macKey == macKey; });
    return found == kKeys.end() ? std::nullopt : std::optional(found->keysym);
}

std::optional<int> macKeyForKeysym(std::uint32_t keysym)
{
    const auto* const found = std::find_if(
        kKeys.begin(), kKeys.end(), [keysym](const KeyPair& key) { return key.keysym == keysym; });
    return found == kKeys.end() ? std::nullopt : std::optional(found->macKey);
}
