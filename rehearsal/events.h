// SPDX-License-Identifier: MIT
#pragma once

#include "locateparser.h"
#include "rehearsalports.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

// The texts of events in the log and on standard output, and the way to standard output.
// usageText() in usage.h lists them all for the user: keep the two in step.
//
// Standard output gets one line an event, at once: the time in milliseconds with three decimals
// (CLOCK_MONOTONIC, so that it compares with the times of other programs), a blank, the event.
//
// Order: a MIDI message has the time at which RtMidi delivered it, on RtMidi's thread; a key the
// time at which the window got it, on the main thread. All MIDI that arrived before a key is
// handled before it, so the times on standard output never go back. They are times of arrival: a
// message takes one or two process cycles of the MIDI server, and a key sent right after it can
// overtake it.

struct KeyPress
{
    bool isDown;
    int macKey;           // kOtherKey: none of those that locating takes.
    std::uint32_t keysym; // X keysym.
    bool command;         // Control is what the Mac's Command is elsewhere.
    bool isRepeat;        // Auto-repeat of a key that is held; the DAW ignores it.
};

QString midiText(const std::vector<unsigned char>& bytes);
QString keyText(const KeyPress& key);
QString locatedText(Target target, int number);
QString transportText(bool isPlaying);
QString noteText(bool wasSent, bool isOn, int note, RehearsalPorts::Out out);

// Whether an MMC command for any device starts (true) or stops the transport; nothing for every
// other message. MMC is Universal Real Time System Exclusive, sub-ID 06 (MIDI 1.0, RP-013).
std::optional<bool> mmcStarts(const std::vector<unsigned char>& bytes);

struct Note
{
    int key;
    int velocity; // 0: its end.
};
// The note that a message of any channel begins or ends; nothing for every other message.
std::optional<Note> noteOf(const std::vector<unsigned char>& bytes);

void printEvent(qint64 timeUs, const QString& text);
