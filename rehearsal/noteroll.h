// SPDX-License-Identifier: MIT
#pragma once

#include "qmidipianoroll.h"

// The notes that are sent and received, on a keyboard as wide as the window. Never takes
// the keyboard focus.
class NoteRoll : public QMidiPianoRoll
{
    Q_OBJECT

public:
    explicit NoteRoll(QWidget* parent = nullptr);

    // Velocity 0 ends the note, as in MIDI.
    void showNote(int note, int velocity);
    void clear(); // Every note ends.

protected:
    void resizeEvent(QResizeEvent* event) override;
};
