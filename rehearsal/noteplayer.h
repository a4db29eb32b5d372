// SPDX-License-Identifier: MIT
#pragma once

#include "rehearsalports.h"

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

    explicit NotePlayer(RehearsalPorts& ports);

    void strike(RehearsalPorts::Out out, int note);
    // Ends all notes at once. Call it before the ports close.
    void releaseAll();

signals:
    // One message was sent, or could not be (see noteText()).
    void played(bool wasSent, bool isOn, int note, RehearsalPorts::Out out);

private:
    void send(bool isOn, RehearsalPorts::Out out, int note);

    RehearsalPorts& ports;
    // One for each note that was ever played; active while it sounds.
    std::map<std::pair<RehearsalPorts::Out, int>, std::unique_ptr<QTimer>> timers;
};
