// SPDX-License-Identifier: MIT
#include "qmidimessage.h"

namespace {

constexpr unsigned char kEndOfSysEx = 0xF7;

unsigned char lowByte(std::uint32_t number)
{
    return static_cast<unsigned char>(number & 0xFFU);
}

} // namespace

QMidiMessage::QMidiMessage(QObject* parent) : QObject(parent)
{
}

QMidiMessage::QMidiMessage(const QMidiMessage& other) : QObject(nullptr), fields(other.fields)
{
}

QMidiMessage::Bytes QMidiMessage::getRawMessage()
{
    if (!fields.rawMessage.empty()) {
        return fields.rawMessage;
    }
    const unsigned char first = lowByte(fields.status + fields.channel - 1);
    switch (fields.status) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
        fields.rawMessage = {first, lowByte(fields.pitch), lowByte(fields.velocity)};
        break;
    case MIDI_CONTROL_CHANGE:
        fields.rawMessage = {first, lowByte(fields.control), lowByte(fields.value)};
        break;
    case MIDI_PROGRAM_CHANGE:
        fields.rawMessage = {first, lowByte(fields.value)};
        break;
    case MIDI_SYSEX:
        fields.rawMessage = fields.sysExData;
        if (!fields.rawMessage.empty() && fields.rawMessage.back() != kEndOfSysEx) {
            fields.rawMessage.push_back(kEndOfSysEx);
        }
        break;
    default:
        break;
    }
    return fields.rawMessage;
}
