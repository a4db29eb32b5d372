// SPDX-License-Identifier: MIT
#include "dawmodes.h"
#include "mackeys.h"
#include "mainwindow.h"
#include "messageboxes.h"
#include "qmidimessage.h"
#include "qmidiout.h"

#include <QScopedValueRollback>

#include <RtMidi.h>

namespace {

// MIDI Machine Control (RP-013): F0 7F <device> 06 <command> F7.
constexpr unsigned char kMmcStop = 0x01;
constexpr unsigned char kMmcPlay = 0x02;

} // namespace

bool MainWindow::findProcess()
{
    if (processPos == -1) {
        keyEventSend.setProcNameList();
        processPos = keyEventSend.getPosFromProcName(dawMode(editData.Mode).daw.process);
    }
    return processPos != -1;
}

bool MainWindow::isSendProcessExist()
{
    if (findProcess()) {
        return true;
    }
    // Notes of a foot switch get here while the box is open; one box says it all.
    if (!isWarningOpen) {
        const QScopedValueRollback<bool> guard(isWarningOpen, true);
        MessageBoxes::warn(this,
                           tr("Process [%1] not found").arg(dawMode(editData.Mode).daw.process));
    }
    return false;
}

void MainWindow::sendKeyEvent(const EditDataSet& entry)
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

void MainWindow::sendMMC(bool start)
{
    const std::vector<unsigned char> bytes{
        0xF0, 0x7F, editData.DeviceIdValue, 0x06, start ? kMmcPlay : kMmcStop, 0xF7};
    try {
        QMidiMessage message;
        message.setStatus(MIDI_SYSEX)->setSysExData(bytes);
        midiOut->sendMessage(&message);
    } catch (const RtMidiError& error) {
        MessageBoxes::critical(this, tr("Midi Send Error"),
                               QString::fromStdString(error.getMessage()));
    }
}

void MainWindow::sendTransport(bool start)
{
    if (isSendProcessExist()) {
        sendMMC(start);
    }
    giveFocusToTable();
}

void MainWindow::on_sendDawStart_clicked()
{
    sendTransport(true);
}

void MainWindow::on_sendDawStop_clicked()
{
    sendTransport(false);
}

void MainWindow::sendKey(unsigned char key)
{
    if (isSendProcessExist()) {
        keyEventSend.sendKeyEvent(processPos, key, false, true);
    }
    giveFocusToTable();
}

void MainWindow::on_sendTab_clicked()
{
    sendKey(kKeyTab);
}

void MainWindow::on_sendSpace_clicked()
{
    sendKey(kKeySpace);
}

void MainWindow::on_sendEnter_clicked()
{
    sendKey(kKeyKeypadEnter);
}

void MainWindow::on_send0_clicked()
{
    sendKey(kKeyKeypad0);
}
