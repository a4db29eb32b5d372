// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

class EditData;
class QMidiIn;
class QMidiOut;
class QObject;

// The three MIDI ports of the program, opened by the names in the preferences. Problems are
// returned, not shown. Main thread only.
class MidiPorts
{
public:
    // What the operator is told about a port that cannot be opened; the text is RtMidi's.
    struct Problem
    {
        QString title;
        QString text;
    };
    using Problems = std::vector<Problem>;

    // The ports are children of `parent`. The preferences are read whenever ports are opened.
    MidiPorts(const EditData& preferences, QObject* parent);
    MidiPorts(const MidiPorts&) = delete;
    MidiPorts& operator=(const MidiPorts&) = delete;

    // Opens each port whose name is not empty, also after another has failed. A name that no
    // present port has opens nothing and is no problem.
    Problems open();
    // Closes and opens all ports. Also finds a MIDI server that was started again.
    Problems reopen();
    void close();
    // True if the MIDI system shows no port at all.
    [[nodiscard]] bool isSystemEmpty() const;

    QMidiIn* const midiIn;         // From the DAW.
    QMidiIn* const shortcutMidiIn; // From the controller.
    QMidiOut* const midiOut;       // To the DAW.

private:
    template <class ForInput, class ForOutput>
    Problems tryEach(ForInput forInput, ForOutput forOutput);
    Problems probe();
    [[nodiscard]] bool isAnyOpen() const;

    const EditData& names;
};
