// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// The keys that the program types, one row a key in mackeys.cpp: for the DAW modes, the key sender
// and the rehearsal. Pure values; any thread.

// macOS virtual key codes (Apple's kVK_ constants), which name positions on the ANSI keyboard.
constexpr unsigned char kKeyT = 0x11;
constexpr unsigned char kKeyReturn = 0x24;
constexpr unsigned char kKeySemicolon = 0x29;
constexpr unsigned char kKeyTab = 0x30;
constexpr unsigned char kKeySpace = 0x31;
constexpr unsigned char kKeyKeypadDecimal = 0x41;
constexpr unsigned char kKeyKeypadEnter = 0x4C;
constexpr unsigned char kKeyKeypadEquals = 0x51;
constexpr unsigned char kKeyKeypad0 = 0x52;

// X keysyms (keysymdef.h). Unlike the macOS codes, those of the digits follow each other.
constexpr std::uint32_t kKeysymKeypad0 = 0xFFB0;
constexpr std::uint32_t kKeysymKeypad9 = 0xFFB9;

struct MacKey
{
    unsigned char code;
    std::uint32_t keysym;      // A letter without Shift, the keypad with Num Lock.
    std::uint8_t usualKeycode; // Where the Linux kernel's keyboards have the key under X.
    const char* name;          // As it is written on the key.
};

// The row of a code or keysym, null if it is none of these keys.
const MacKey* findMacKey(int code);
const MacKey* findMacKeyOfKeysym(std::uint32_t keysym);

// The code of a digit, 0 to 9, of the numeric keypad; and the digit of a code, -1 if it is none.
unsigned char keypadKey(int digit);
int keypadDigit(int code);
