// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QString>
#include <QStringList>

#include <optional>

// What a key made the DAW do.
struct DawEvent
{
    enum Kind {
        Located,       // target and number say where.
        WrongSequence, // text says which keys, and what is wrong with them.
        TogglePlay,
        Play,
    };
    Kind kind;
    Target target = Target::Bar;
    int number = 0;
    QString text;
};

// Interprets the keys that a DAW gets, as that DAW would. One key press in, at most one event out;
// knows no window, no clock and no MIDI. Takes no releases and no auto-repeats.
//
//   Pro Tools   bar     keypad =    digits  keypad Enter
//               marker  keypad .    digits  keypad .
//   Studio One  bar     Command+T   digits  Return
//               marker  Command+;   digits  keypad Enter
//
// Digits count on the keypad only. Any other key while an entry is open is a wrong sequence, and
// so are an entry without digits, a number that no song can have, and digits while none is open.
// The rest of a wrong sequence is ignored; the next opening key starts a new entry, even if it is
// the wrong key itself. (A keypad "." that closes a broken entry opens the next one.)
//
// While no entry is open Space starts and stops the transport in both; keypad Enter starts it in
// Studio One. Other single keys, among them keypad 0 and Tab, which the operator window can send,
// do nothing and are not wrong.
class LocateParser
{
public:
    explicit LocateParser(Daw ofDaw);

    // `macKey` is a macOS virtual key code, or kOtherKey; `command`: Command was held.
    std::optional<DawEvent> press(int macKey, bool command);

    // The entry that is being typed, for display; nullopt while none is open.
    [[nodiscard]] std::optional<Target> openTarget() const;
    [[nodiscard]] QString digits() const { return number; }

private:
    struct Sequence;
    static const Sequence kSequences[];

    bool openBy(int macKey, bool command);
    std::optional<DawEvent> pressInEntry(int macKey, bool command);
    std::optional<DawEvent> pressOutside(int macKey, bool command);
    DawEvent wrong(const QString& reason);

    Daw daw;
    const Sequence* open = nullptr; // The entry being typed, if any.
    QString number;                 // Its digits so far.
    QStringList keys;               // The labels of its keys so far.
    bool lost = false;              // Inside the rest of a wrong sequence.
};
