// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "qkeyeventsend.h"

class QMidiOut;

// The DAW as the operator window drives it: its process, which gets keys, and its transport, which
// gets MIDI Machine Control. Which DAW and which device ID, the preferences say at each call. Main
// thread only; typing blocks for its pauses.
class Daw
{
public:
    // Neither is owned; both outlive the object.
    Daw(const EditData& preferences, QMidiOut& output) : editData(preferences), midiOut(output) {}

    // The name of the process that gets the keys.
    [[nodiscard]] QString processName() const;
    // True if the process is running. Once found it is taken to be there until it is forgotten.
    bool findProcess();
    void forgetProcess() { processPos = -1; }
    [[nodiscard]] bool isProcessKnown() const { return processPos != -1; }

    // MMC Play or Stop (RP-013). Throws RtMidiError.
    void sendMMC(bool start);
    // Types the keys that locate a song, after the pause that the DAW needs after an MMC Stop.
    void typeLocate(const EditDataSong& song);
    // Types one key, a macOS virtual key code.
    void typeKey(unsigned char key);

private:
    const EditData& editData;
    QMidiOut& midiOut;
    QKeyEventSend keyEventSend;
    int processPos = -1; // In the key sender's process list; -1: not looked up yet.
};
