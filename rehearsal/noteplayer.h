// SPDX-License-Identifier: MIT
#pragma once

#include "midiports.h"

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>
#include <utility>

// Plays notes: a note on and, shortly after, its note off. A note that is played again while it
// sounds ends first.
class NotePlayer : public QObject
{
    Q_OBJECT

public:
    static constexpr unsigned char kVelocity = 100;

    explicit NotePlayer(MidiPorts& ports);

    void strike(MidiPorts::Out out, int note);
    // Ends all notes at once. Call it before the ports close.
    void releaseAll();

signals:
    // One message was sent, or could not be (see noteText()).
    void played(bool wasSent, bool isOn, int note, MidiPorts::Out out);

private:
    void send(bool isOn, MidiPorts::Out out, int note);

    MidiPorts& ports;
    // One for each note that was ever played; active while it sounds.
    std::map<std::pair<MidiPorts::Out, int>, std::unique_ptr<QTimer>> timers;
};
