// SPDX-License-Identifier: MIT
#pragma once

#include "midiport.h"

#include <QObject>

#include <cstdint>
#include <vector>

class QMidiMessage;

// A MIDI output port. What is sent while it is closed, and empty messages, go nowhere; so does what
// a JACK server does not take because it has shut down or is stalled, with one warning.
class QMidiOut : public QObject, public MidiOutput
{
    Q_OBJECT

public:
    explicit QMidiOut(QObject* parent = nullptr);

    // Channels count from 1; every byte is the low 8 bits of its value. Errors of RtMidi arrive as
    // its exception RtMidiError.
    void sendNoteOn(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity);
    void sendNoteOff(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity);
    void sendRawMessage(const std::vector<unsigned char>& bytes) { send(bytes); }
    // Traces the message, see traceSent().
    void sendMessage(QMidiMessage* message);
};
