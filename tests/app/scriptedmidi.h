// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// Takes RtMidi's place in a test program that links it: a MIDI system of the test's own, without a
// server.
namespace ScriptedMidi {

struct State
{
    QStringList ports; // Both directions have the same.
    QString openError; // Raised by opening a port, unless empty;
    QString sendError; // by sending.
    QStringList calls; // Such as "RtMidi Input Client: open 1 as RtMidi Input".
};

inline State state;

} // namespace ScriptedMidi
