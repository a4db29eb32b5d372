// SPDX-License-Identifier: MIT
#include "qmidiout.h"

#include "miditrace.h"
#include "qmidimessage.h"

namespace {

std::vector<unsigned char> noteBytes(QMidiStatus status, std::uint32_t channel, std::uint32_t pitch,
                                     std::uint32_t velocity)
{
    return QMidiMessage()
        .setStatus(status)
        ->setChannel(channel)
        ->setPitch(pitch)
        ->setVelocity(velocity)
        ->getRawMessage();
}

} // namespace

QMidiOut::QMidiOut(QObject* parent)
    : QObject(parent), MidiOutput("RtMidi Output Client", "RtMidi Output")
{
    hasBackEnd();
}

void QMidiOut::sendNoteOn(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity)
{
    send(noteBytes(MIDI_NOTE_ON, channel, pitch, velocity));
}

void QMidiOut::sendNoteOff(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity)
{
    send(noteBytes(MIDI_NOTE_OFF, channel, pitch, velocity));
}

void QMidiOut::sendMessage(QMidiMessage* message)
{
    const std::vector<unsigned char> bytes = message->getRawMessage();
    if (!bytes.empty()) {
        traceSent(bytes);
        send(bytes);
    }
}
