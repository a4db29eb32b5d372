// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>

// The keys that the program types, as macOS virtual key codes and as X keysyms (keysymdef.h of the
// X protocol). One macOS code belongs to one keysym and the other way round. A letter stands for
// its key without Shift, a keypad digit for its key with Num Lock.
//
// Both functions are pure and may be called from any thread. A code that the program never types
// has no keysym, a keysym of any other key no code.
std::optional<std::uint32_t> keysymForMacKey(int macKey);
std::optional<int> macKeyForKeysym(std::uint32_t keysym);
