// SPDX-License-Identifier: MIT
#include "midiports.h"

#include "editdata.h"
#include "qmidiin.h"
#include "qmidiout.h"

#include <QCoreApplication>

#include <RtMidi.h>

MidiPorts::MidiPorts(const EditData& preferences, QObject* parent)
    : midiIn(new QMidiIn(parent)),
      shortcutMidiIn(new QMidiIn(parent)),
      midiOut(new QMidiOut(parent)),
      names(preferences)
{
}

MidiPorts::Problems MidiPorts::open()
{
    return tryEach([](QMidiIn* port, const QString& name) { port->openPort(name); },
                   [](QMidiOut* port, const QString& name) {
                       const int index = port->indexOf(name);
                       if (index != -1) {
                           port->openPort(static_cast<unsigned int>(index));
                       }
                   });
}

// A problem, or no port to be seen, may mean a MIDI server that died and came back. A new
// connection to it works only if all old ones of the process are gone before.
MidiPorts::Problems MidiPorts::reopen()
{
    const bool wereOpen = isAnyOpen();
    close();
    Problems problems = open();
    if (problems.empty() && !isSystemEmpty()) {
        return problems;
    }
    midiIn->dropBackEnd();
    shortcutMidiIn->dropBackEnd();
    midiOut->dropBackEnd();
    problems = open();
    return problems.empty() && wereOpen && isSystemEmpty() ? probe() : problems;
}

void MidiPorts::close()
{
    const auto closeIfOpen = [](auto* port) {
        if (port->isPortOpen()) {
            port->closePort();
        }
    };
    closeIfOpen(midiIn);
    closeIfOpen(shortcutMidiIn);
    closeIfOpen(midiOut);
}

bool MidiPorts::isSystemEmpty() const
{
    try {
        return midiIn->getPorts().isEmpty() && shortcutMidiIn->getPorts().isEmpty() &&
               midiOut->getPorts().isEmpty();
    } catch (const RtMidiError&) {
        return true;
    }
}

bool MidiPorts::isAnyOpen() const
{
    return midiIn->isPortOpen() || shortcutMidiIn->isPortOpen() || midiOut->isPortOpen();
}

// Opens virtual ports, which fails only where there is no MIDI server: for RtMidi's error.
MidiPorts::Problems MidiPorts::probe()
{
    const auto openVirtual = [](auto* port, const QString& name) {
        port->openVirtualPort(name);
        port->closePort();
    };
    return tryEach(openVirtual, openVirtual);
}

template <class ForInput, class ForOutput>
MidiPorts::Problems MidiPorts::tryEach(ForInput forInput, ForOutput forOutput)
{
    Problems problems;
    const auto attempt = [&problems](const char* title, const auto& act, auto* port,
                                     const QString& name) {
        try {
            if (!name.isEmpty()) {
                act(port, name);
            }
        } catch (const RtMidiError& error) {
            problems.push_back({QCoreApplication::translate("MainWindow", title),
                                QString::fromStdString(error.getMessage())});
        }
    };
    attempt(QT_TRANSLATE_NOOP("MainWindow", "Midi In Open Error"), forInput, midiIn,
            names.MidiInPort);
    attempt(QT_TRANSLATE_NOOP("MainWindow", "Shortcut Midi In Open Error"), forInput,
            shortcutMidiIn, names.ShortcutMidiInPort);
    attempt(QT_TRANSLATE_NOOP("MainWindow", "Midi Out Open Error"), forOutput, midiOut,
            names.MidiOutPort);
    return problems;
}
