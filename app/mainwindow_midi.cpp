// SPDX-License-Identifier: MIT
#include "mainwindow.h"
#include "messageboxes.h"
#include "qmidiin.h"
#include "qmidimessage.h"

namespace {

// The notes with which the DAW reports the end of a song.
constexpr std::uint32_t kEndOfSongNote = 24;
constexpr std::uint32_t kOtherEndOfSongNote = 36;

enum RunMode { MANUAL = 0, AUTO_STOP = 1, AUTO_LOCATE = 2 };

} // namespace

void MainWindow::connectMidi()
{
    connect(midiPorts.midiIn, &QMidiIn::midiMessageReceived, this, &MainWindow::onMidiReceive);
    connect(midiPorts.shortcutMidiIn, &QMidiIn::midiMessageReceived, this,
            &MainWindow::onShortcutMidiReceive);
}

void MainWindow::midiReconnect()
{
    for (const MidiPorts::Problem& problem : midiPorts.reopen()) {
        MessageBoxes::critical(this, problem.title, problem.text);
    }
}

void MainWindow::onMidiReceive(QMidiMessage* pMidMsg)
{
    if (!pMidMsg || !operationOn || pMidMsg->getStatus() != MIDI_NOTE_OFF) {
        return;
    }
    const std::uint32_t note = pMidMsg->getPitch();
    if (note != kEndOfSongNote && note != kOtherEndOfSongNote) {
        return;
    }
    switch (comboMode->currentIndex()) {
    case AUTO_STOP:
        sendDawStop->animateClick(kClickMs);
        break;
    case AUTO_LOCATE:
        locateNext();
        break;
    case MANUAL:
    default:
        break;
    }
}

// Locates the entry marked next, whatever is selected. The selection stays, the focus too.
void MainWindow::locateNext()
{
    if (!isLocatable(nextPos) || shownEntry(nextPos)->SetType != kSetTypeSong) {
        return; // A run that began on a space has no next entry; or the entry is gone.
    }
    // Known since the run began, unless preferences that were open then have been confirmed since.
    if (!findProcess()) {
        return;
    }
    const int selected = selectedPos();
    locateEntry(nextPos);
    if (!tableSetList->isEditing()) {
        selectedRow(selected);
    }
}

void MainWindow::onShortcutMidiReceive(QMidiMessage* pMidMsg)
{
    if (!pMidMsg || pMidMsg->getStatus() != MIDI_NOTE_ON || pMidMsg->getVelocity() == 0) {
        return;
    }
    const auto note = static_cast<std::int32_t>(pMidMsg->getPitch());
    if (note == editData.NoteSongUp) {
        pressTableKey(Qt::Key_Up);
    } else if (note == editData.NoteSongDown) {
        pressTableKey(Qt::Key_Down);
    } else if (note == editData.NoteLocate) {
        sendLocate->animateClick(kClickMs);
    } else if (note == editData.NoteDawPlay) {
        sendDawStart->animateClick(kClickMs);
    } else if (note == editData.NoteDawStop) {
        sendDawStop->animateClick(kClickMs);
    }
}

void MainWindow::pressTableKey(Qt::Key key)
{
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    tableSetList->pressKey(&event);
}
