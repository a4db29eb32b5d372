// SPDX-License-Identifier: MIT
#include "daw.h"

#include "dawmodes.h"
#include "qmidimessage.h"
#include "qmidiout.h"

namespace {

// MIDI Machine Control (RP-013): F0 7F <device> 06 <command> F7.
constexpr unsigned char kMmcStop = 0x01;
constexpr unsigned char kMmcPlay = 0x02;

} // namespace

QString Daw::processName() const
{
    return dawMode(editData.Mode).daw.process;
}

bool Daw::findProcess()
{
    if (processPos == -1) {
        keyEventSend.setProcNameList();
        processPos = keyEventSend.getPosFromProcName(processName());
    }
    return isProcessKnown();
}

void Daw::sendMMC(bool start)
{
    QMidiMessage message;
    message.setStatus(MIDI_SYSEX)
        ->setSysExData(
            {0xF0, 0x7F, editData.DeviceIdValue, 0x06, start ? kMmcPlay : kMmcStop, 0xF7});
    midiOut.sendMessage(&message);
}

void Daw::typeLocate(const EditDataSong& song)
{
    const DawMode& mode = dawMode(editData.Mode);
    if (mode.stopPauseUs > 0) {
        QKeyEventSend::pause(mode.stopPauseUs);
    }
    for (const KeyStroke& stroke : locateKeys(mode, song)) {
        keyEventSend.sendKeyEvent(processPos, stroke.key, stroke.isCmd, stroke.isVirtualKey);
    }
}

void Daw::typeKey(unsigned char key)
{
    keyEventSend.sendKeyEvent(processPos, key, false, true);
}
