// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

struct EditDataSong;

// What a DAW wants typed to jump to a song, decided by values alone. Key codes are macOS virtual
// key codes (Apple's kVK_ constants), which name positions on the ANSI keyboard.

constexpr unsigned char kKeyT = 0x11;
constexpr unsigned char kKeyReturn = 0x24;
constexpr unsigned char kKeySemicolon = 0x29;
constexpr unsigned char kKeyTab = 0x30;
constexpr unsigned char kKeySpace = 0x31;
constexpr unsigned char kKeyKeypadDecimal = 0x41;
constexpr unsigned char kKeyKeypadEnter = 0x4C;
constexpr unsigned char kKeyKeypadEquals = 0x51;
constexpr unsigned char kKeyKeypad0 = 0x52;

// One key press as QKeyEventSend::sendKeyEvent() takes it.
struct KeyStroke
{
    unsigned char key;
    bool isCmd;
    bool isVirtualKey; // false: a digit character, typed on the numeric keypad
};

// The keys of one locate, to be typed after the transport has been stopped.
struct LocateKeys
{
    unsigned int pauseUs; // between the MMC Stop and the first key
    std::vector<KeyStroke> strokes;
};

// The name of the process that a DAW mode addresses: "Studio One" for its two modes, "Pro Tools"
// for all others.
QString dawProcessName(std::int32_t mode);

// The keys that locate a song in a DAW mode; none for a mode outside 0 to 3. A negative bar or
// marker, which only a hand-edited file can hold, is typed as 0: a sign is no key of a DAW's
// locate entry.
LocateKeys locateKeys(std::int32_t mode, const EditDataSong& song);
