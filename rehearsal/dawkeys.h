// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

// The keys that a workstation understands, as macOS virtual key codes (Apple's kVK_ constants), and
// what to call them.

constexpr int kOtherKey = -1; // Any key that is not one of them.

constexpr int kKeyT = 0x11;
constexpr int kKeyReturn = 0x24;
constexpr int kKeySemicolon = 0x29;
constexpr int kKeyTab = 0x30;
constexpr int kKeySpace = 0x31;
constexpr int kKeyKeypadDecimal = 0x41;
constexpr int kKeyKeypadEnter = 0x4C;
constexpr int kKeyKeypadEquals = 0x51;
constexpr int kKeyKeypad0 = 0x52;

// The key that arrived as this X keysym, or kOtherKey. Takes what a hand on the keyboard can
// produce besides what is posted: T with Caps Lock, and the keypad's comma of some layouts.
int dawKey(std::uint32_t keysym);

// 0 to 9 for a digit of the keypad, -1 for any other key.
int keypadDigit(int key);

// As it is written on the key: "=", "Enter", "7".
QString keyLabel(int key);
