// SPDX-License-Identifier: MIT
#include "daw.h"

#include "dawmodes.h"
#include "messageboxes.h"
#include "qmidimessage.h"
#include "qmidiout.h"

#include <QCoreApplication>
#include <QScopedValueRollback>

#include <RtMidi.h>

namespace {

// MIDI Machine Control (RP-013): F0 7F <device> 06 <command> F7.
constexpr unsigned char kMmcStop = 0x01;
constexpr unsigned char kMmcPlay = 0x02;

} // namespace

Daw::Daw(const EditData& preferences, QMidiOut& output, QWidget& parentOfBoxes)
    : editData(preferences), midiOut(output), window(parentOfBoxes)
{
}

bool Daw::findProcess()
{
    if (processPos == -1) {
        keyEventSend.setProcNameList();
        processPos = keyEventSend.getPosFromProcName(dawMode(editData.Mode).daw.process);
    }
    return processPos != -1;
}

bool Daw::isSendProcessExist()
{
    if (findProcess()) {
        return true;
    }
    // Notes of a foot switch get here while the box is open, and must not open another.
    if (!isWarningOpen) {
        const QScopedValueRollback<bool> guard(isWarningOpen, true);
        const QString text = QCoreApplication::translate("MainWindow", "Process [%1] not found");
        MessageBoxes::warn(&window, text.arg(dawMode(editData.Mode).daw.process));
    }
    return false;
}

void Daw::sendKeyEvent(const EditDataSet& entry)
{
    if (processPos == -1) {
        qWarning("Nothing is sent: the DAW's process has not been looked up");
        return;
    }
    sendMMC(false);
    const DawMode& mode = dawMode(editData.Mode);
    if (mode.stopPauseUs > 0) {
        QKeyEventSend::pause(mode.stopPauseUs);
    }
    for (const KeyStroke& stroke : locateKeys(mode, entry.Song)) {
        keyEventSend.sendKeyEvent(processPos, stroke.key, stroke.isCmd, stroke.isVirtualKey);
    }
}

void Daw::sendMMC(bool start)
{
    try {
        QMidiMessage message;
        message.setStatus(MIDI_SYSEX)
            ->setSysExData(
                {0xF0, 0x7F, editData.DeviceIdValue, 0x06, start ? kMmcPlay : kMmcStop, 0xF7});
        midiOut.sendMessage(&message);
    } catch (const RtMidiError& error) {
        MessageBoxes::critical(&window,
                               QCoreApplication::translate("MainWindow", "Midi Send Error"),
                               QString::fromStdString(error.getMessage()));
    }
}

void Daw::sendTransport(bool start)
{
    if (isSendProcessExist()) {
        sendMMC(start);
    }
}

void Daw::sendKey(unsigned char key)
{
    if (isSendProcessExist()) {
        keyEventSend.sendKeyEvent(processPos, key, false, true);
    }
}
