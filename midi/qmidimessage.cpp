// SPDX-License-Identifier: MIT
#include "qmidimessage.h"

#include <utility>

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

QMidiMessage::QMidiMessage(const QMidiMessage& other)
    : QObject(nullptr),
      status(other.status),
      channel(other.channel),
      pitch(other.pitch),
      velocity(other.velocity),
      control(other.control),
      value(other.value),
      deltaTime(other.deltaTime),
      sysExData(other.sysExData),
      rawMessage(other.rawMessage)
{
}

QMidiStatus QMidiMessage::getStatus() const
{
    return status;
}

std::uint32_t QMidiMessage::getChannel() const
{
    return channel;
}

std::uint32_t QMidiMessage::getPitch() const
{
    return pitch;
}

std::uint32_t QMidiMessage::getVelocity() const
{
    return velocity;
}

std::uint32_t QMidiMessage::getControl() const
{
    return control;
}

std::uint32_t QMidiMessage::getValue() const
{
    return value;
}

double QMidiMessage::getDeltaTime() const
{
    return deltaTime;
}

std::vector<unsigned char> QMidiMessage::getSysExData() const
{
    return sysExData;
}

QMidiMessage* QMidiMessage::setStatus(QMidiStatus newStatus)
{
    status = newStatus;
    return this;
}

QMidiMessage* QMidiMessage::setChannel(std::uint32_t newChannel)
{
    channel = newChannel;
    return this;
}

QMidiMessage* QMidiMessage::setPitch(std::uint32_t newPitch)
{
    pitch = newPitch;
    return this;
}

QMidiMessage* QMidiMessage::setVelocity(std::uint32_t newVelocity)
{
    velocity = newVelocity;
    return this;
}

QMidiMessage* QMidiMessage::setControl(std::uint32_t newControl)
{
    control = newControl;
    return this;
}

QMidiMessage* QMidiMessage::setValue(std::uint32_t newValue)
{
    value = newValue;
    return this;
}

QMidiMessage* QMidiMessage::setDeltaTime(double milliseconds)
{
    deltaTime = milliseconds;
    return this;
}

QMidiMessage* QMidiMessage::setSysExData(std::vector<unsigned char> bytes)
{
    sysExData = std::move(bytes);
    return this;
}

QMidiMessage* QMidiMessage::setRawMessage(std::vector<unsigned char> bytes)
{
    rawMessage = std::move(bytes);
    return this;
}

void QMidiMessage::clear()
{
    status = {};
    channel = 1;
    pitch = 0;
    velocity = 0;
    control = 0;
    value = 0;
    deltaTime = 0;
    sysExData.clear();
    rawMessage.clear();
}

std::vector<unsigned char> QMidiMessage::getRawMessage()
{
    if (!rawMessage.empty()) {
        return rawMessage;
    }
    const unsigned char first = lowByte(status + channel - 1);
    switch (status) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
        rawMessage = {first, lowByte(pitch), lowByte(velocity)};
        break;
    case MIDI_CONTROL_CHANGE:
        rawMessage = {first, lowByte(control), lowByte(value)};
        break;
    case MIDI_PROGRAM_CHANGE:
        rawMessage = {first, lowByte(value)};
        break;
    case MIDI_SYSEX:
        rawMessage = sysExData;
        if (!rawMessage.empty() && rawMessage.back() != kEndOfSysEx) {
            rawMessage.push_back(kEndOfSysEx);
        }
        break;
    default:
        break;
    }
    return rawMessage;
}
