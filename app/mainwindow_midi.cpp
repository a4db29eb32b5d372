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
// reach: then all connections are given up before any is made anew. If ports that were open until
// now find nothing either, the library is asked whether a server is there.
std::vector<MainWindow::PortError> MainWindow::reopenMidiPorts()
{
    const bool wereOpen =
        midiIn->isPortOpen() || shortcutMidiIn->isPortOpen() || midiOut->isPortOpen();
    closeMidiPorts();
    std::vector<PortError> errors = openMidiPorts();
    if (errors.empty() && !isMidiEmpty()) {
        return errors;
    }
    midiIn->dropBackEnd();
    shortcutMidiIn->dropBackEnd();
    midiOut->dropBackEnd();
    errors = openMidiPorts();
    return errors.empty() && wereOpen && isMidiEmpty() ? probeMidiPorts() : errors;
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

void MainWindow::closeMidiPorts()
{
    if (midiIn->isPortOpen()) {
        midiIn->closePort();
    }
    if (shortcutMidiIn->isPortOpen()) {
        shortcutMidiIn->closePort();
    }
    if (midiOut->isPortOpen()) {
        midiOut->closePort();
    }
}

// Does something with each port that the preferences name, whatever becomes of the others.
template <class ForInput, class ForOutput>
std::vector<MainWindow::PortError> MainWindow::tryMidiPorts(ForInput forInput, ForOutput forOutput)
{
    std::vector<PortError> errors;
    const auto attempt = [&errors](const char* title, const auto& act, auto* port,
                                   const QString& name) {
        try {
            if (!name.isEmpty()) {
                act(port, name);
            }
        } catch (const RtMidiError& error) {
            errors.push_back({tr(title), QString::fromStdString(error.getMessage())});
        }
    };
    attempt(QT_TR_NOOP("Midi In Open Error"), forInput, midiIn, editData.MidiInPort);
    attempt(QT_TR_NOOP("Shortcut Midi In Open Error"), forInput, shortcutMidiIn,
            editData.ShortcutMidiInPort);
    attempt(QT_TR_NOOP("Midi Out Open Error"), forOutput, midiOut, editData.MidiOutPort);
    return errors;
}

// A name that no present port has opens nothing and is no error.
std::vector<MainWindow::PortError> MainWindow::openMidiPorts()
{
    return tryMidiPorts([](QMidiIn* port, const QString& name) { port->openPort(name); },
                        [](QMidiOut* port, const QString& name) {
                            port->requireBackEnd();
                            const int index = port->getPorts().indexOf(name);
                            if (index != -1) {
                                port->openPort(static_cast<unsigned int>(index));
                            }
                        });
}

// A port of our own can be made wherever there is MIDI.
std::vector<MainWindow::PortError> MainWindow::probeMidiPorts()
{
    const auto probe = [](auto* port, const QString& name) {
        port->openVirtualPort(name);
        port->closePort();
    };
    return tryMidiPorts(probe, probe);
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
