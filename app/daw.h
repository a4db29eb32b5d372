// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"
#include "qkeyeventsend.h"

class QMidiOut;
class QWidget;

// The DAW as the operator window drives it: its process, which gets keys, and its transport, which
// gets MIDI Machine Control. The preferences say at each call which DAW and which device ID.
// Failures are shown in a modal box. Main thread only; typing blocks for its pauses.
class Daw
{
public:
    // None is owned; all outlive the object. The window is the parent of the boxes.
    Daw(const EditData& preferences, QMidiOut& output, QWidget& parentOfBoxes);

    // True if the DAW's process is running. Once found, it counts as running until
    // forgetProcess().
    bool findProcess();
    // The same, with a warning if it is not.
    bool isSendProcessExist();
    void forgetProcess() { processPos = -1; }

    // Stops the transport and types the keys that locate the song of an entry. The process has to
    // be known; otherwise nothing is sent.
    void sendKeyEvent(const EditDataSet& entry);
    // The transport and the key buttons: nothing without the DAW's process. A key is a macOS
    // virtual key code.
    void sendTransport(bool start);
    void sendKey(unsigned char key);

private:
    void sendMMC(bool start);

    const EditData& editData;
    QMidiOut& midiOut;
    QWidget& window;
    QKeyEventSend keyEventSend;
    int processPos = -1;        // In the key sender's process list; -1: not looked up yet.
    bool isWarningOpen = false; // The "not found" box waits for an answer.
};
