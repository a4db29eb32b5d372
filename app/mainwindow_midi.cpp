// SPDX-License-Identifier: MIT
#include "mainwindow.h"
#include "messageboxes.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"

#include <RtMidi.h>

namespace {

// The notes with which the DAW reports the end of a song.
constexpr std::uint32_t kEndOfSongNote = 24;
constexpr std::uint32_t kOtherEndOfSongNote = 36;

// Titles of the boxes that tell that a port could not be opened.
constexpr const char* kMidiInError = QT_TRANSLATE_NOOP("MainWindow", "Midi In Open Error");
constexpr const char* kShortcutMidiInError =
    QT_TRANSLATE_NOOP("MainWindow", "Shortcut Midi In Open Error");
constexpr const char* kMidiOutError = QT_TRANSLATE_NOOP("MainWindow", "Midi Out Open Error");

enum RunMode { MANUAL = 0, AUTO_STOP = 1, AUTO_LOCATE = 2 };

} // namespace

void MainWindow::connectMidi()
{
    connect(midiIn, &QMidiIn::midiMessageReceived, this, &MainWindow::onMidiReceive);
    connect(shortcutMidiIn, &QMidiIn::midiMessageReceived, this,
            &MainWindow::onShortcutMidiReceive);
}

void MainWindow::midiReconnect()
{
    for (const PortError& error : reopenMidiPorts()) {
        MessageBoxes::critical(this, error.title, error.text);
    }
}

// Closes the ports and opens them by the names of the preferences. An error, or nothing to be seen
// at all, may mean a MIDI server that died and came back, which nothing of the old connection can
// reach: then all connections are given up before any is made anew. If that finds nothing either,
// the ports that were open until now are reported as lost.
std::vector<MainWindow::PortError> MainWindow::reopenMidiPorts()
{
    const std::vector<PortError> lost = closeMidiPorts();
    std::vector<PortError> errors = openMidiPorts();
    if (errors.empty() && !isMidiEmpty()) {
        return errors;
    }
    midiIn->dropBackEnd();
    shortcutMidiIn->dropBackEnd();
    midiOut->dropBackEnd();
    errors = openMidiPorts();
    return errors.empty() && isMidiEmpty() ? lost : errors;
}

bool MainWindow::isMidiEmpty()
{
    try {
        return midiIn->getPorts().isEmpty() && shortcutMidiIn->getPorts().isEmpty() &&
               midiOut->getPorts().isEmpty();
    } catch (const RtMidiError&) {
        return true;
    }
}

// Returns, for each port that was open, what there is to say if it cannot be opened again.
std::vector<MainWindow::PortError> MainWindow::closeMidiPorts()
{
    std::vector<PortError> lost;
    const auto close = [&lost](auto* port, const char* title) {
        if (port->isPortOpen()) {
            port->closePort();
            lost.push_back({tr(title), tr("The MIDI server is gone")});
        }
    };
    close(midiIn, kMidiInError);
    close(shortcutMidiIn, kShortcutMidiInError);
    close(midiOut, kMidiOutError);
    return lost;
}

// Opens the ports that the preferences name, each whatever becomes of the others. A name that no
// present port has opens nothing and is no error.
std::vector<MainWindow::PortError> MainWindow::openMidiPorts()
{
    std::vector<PortError> errors;
    const auto attempt = [&errors](const char* title, const auto& open) {
        try {
            open();
        } catch (const RtMidiError& error) {
            errors.push_back({tr(title), QString::fromStdString(error.getMessage())});
        }
    };
    if (!editData.MidiInPort.isEmpty()) {
        attempt(kMidiInError, [this] { midiIn->openPort(editData.MidiInPort); });
    }
    if (!editData.ShortcutMidiInPort.isEmpty()) {
        attempt(kShortcutMidiInError,
                [this] { shortcutMidiIn->openPort(editData.ShortcutMidiInPort); });
    }
    if (!editData.MidiOutPort.isEmpty()) {
        attempt(kMidiOutError, [this] {
            midiOut->requireBackEnd();
            const int index = midiOut->getPorts().indexOf(editData.MidiOutPort);
            if (index != -1) {
                midiOut->openPort(static_cast<unsigned int>(index));
            }
        });
    }
    return errors;
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
