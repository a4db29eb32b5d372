// SPDX-License-Identifier: MIT
#include "mididecoder.h"

#include "qmidimessage.h"

namespace {

constexpr unsigned char kFirstSystemStatus = 0xF0;

} // namespace

std::unique_ptr<QMidiMessage> decodeMidi(double stampSeconds,
                                         const std::vector<unsigned char>& bytes)
{
    const auto data = [&bytes](std::size_t i) -> std::uint32_t {
        return i < bytes.size() ? bytes[i] : 0;
    };
    const unsigned char first = bytes.front();
    const bool isSystem = first >= kFirstSystemStatus;
    const auto status = static_cast<QMidiStatus>(isSystem ? first : first & 0xF0U);

    auto message = std::make_unique<QMidiMessage>();
    message->setStatus(status)
        ->setChannel(isSystem ? 0 : (first & 0x0FU) + 1)
        ->setDeltaTime(1000 * stampSeconds);
    switch (status) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
        message->setPitch(data(1))->setVelocity(data(2));
        break;
    case MIDI_KEY_PRESSURE:
        message->setPitch(data(1))->setValue(data(2));
        break;
    case MIDI_CONTROL_CHANGE:
        message->setControl(data(1))->setValue(data(2));
        break;
    case MIDI_PROGRAM_CHANGE:
    case MIDI_CHANNEL_PRESSURE:
        message->setValue(data(1));
        break;
    case MIDI_PITCH_BEND:
        message->setValue(data(1) + 128 * data(2));
        break;
    case MIDI_SYSEX:
        message->setSysExData(bytes);
        break;
    default:
        break;
    }
    return message;
}
