// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

// The keys that a DAW understands, as macOS virtual key codes: those of mackeys.h.

constexpr int kOtherKey = -1; // Any other key.

// The key that arrived as this X keysym, or kOtherKey. Takes what a hand on the keyboard can
// produce beyond what is posted: T with Caps Lock, and the keypad's comma of some layouts.
int dawKey(std::uint32_t keysym);

// The label of the key: "=", "Enter", "7".
QString keyLabel(int key);
