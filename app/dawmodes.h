// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <vector>

struct EditDataSong;

// The DAW modes, the values of EditData::Mode, in one table: dawmodes.cpp. A new DAW is a row there
// and a radio button in the preferences. The table is a separate library, so that the rehearsal
// reads it too.

// The window's key buttons, each also a key on the keyboard, as bits.
enum KeyButton : unsigned { Button0 = 1, ButtonTab = 2, ButtonSpace = 4, ButtonEnter = 8 };

// One key press as QKeyEventSend::sendKeyEvent() takes it.
struct KeyStroke
{
    unsigned char key;
    bool isCmd;
    bool isVirtualKey; // false: a digit character, typed on the numeric keypad
};

struct DawMode
{
    using Number = std::int32_t EditDataSong::*;
    struct Daw
    {
        QLatin1String process; // The name of the process that gets the keys.
        unsigned buttons;      // The key buttons that are enabled.
        unsigned keys;         // The key buttons that their key on the keyboard clicks.
    };

    Daw daw;
    unsigned int stopPauseUs; // Between the MMC Stop and the first key.
    KeyStroke opener;         // Opens the entry for a number...
    Number number;            // ...of this kind (null: no key is typed)...
    KeyStroke closer;         // ...and confirms it.
};

// The row of a mode. A mode that is not in the table (edited by hand) has the process and the
// buttons of Pro Tools, binds no key but 0, and types nothing.
const DawMode& dawMode(std::int32_t mode);

// The first mode of the DAW with this process, -1 if there is none.
std::int32_t modeOfProcess(const QString& process);

// The keys that locate a song, to be typed stopPauseUs after the MMC Stop. A negative bar or
// marker, which only a file edited by hand can hold, is typed as 0: the DAW must never get a "-".
std::vector<KeyStroke> locateKeys(const DawMode& mode, const EditDataSong& song);
