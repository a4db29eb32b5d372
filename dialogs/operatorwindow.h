// SPDX-License-Identifier: MIT
#pragma once

// What the dialogs ask of the operator window after the shared data has changed. A dialog finds it
// in its parent; without one (in a test) the calls are left out.
class OperatorWindow
{
public:
    virtual void setShowData() = 0;       // Shows were saved: fill the show selector from them.
    virtual void setPreferenceData() = 0; // Preferences were confirmed: apply them.
    virtual void midiReconnect() = 0;     // Then: close and open the MIDI ports by their names.

protected:
    ~OperatorWindow() = default;
};
