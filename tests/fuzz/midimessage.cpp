// SPDX-License-Identifier: MIT
#include "check.h"
#include "qmidimessage.h"

#include <QtEndian>

#include <algorithm>
#include <array>

// A message made of any fields and bytes: it encodes to what its status allows, once, and copies
// and raw bytes are kept as they are.

namespace {

using Bytes = std::vector<unsigned char>;

unsigned char lowByte(std::uint32_t number)
{
    return static_cast<unsigned char>(number % 256);
}

// The bytes that a message of the status has. Channels count from 1; of a number that does not fit
// into its byte, the low bits count.
Bytes encodingOf(const QMidiMessage& message)
{
    const unsigned char first = lowByte(message.getStatus() + message.getChannel() - 1);
    switch (message.getStatus()) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
        return {first, lowByte(message.getPitch()), lowByte(message.getVelocity())};
    case MIDI_CONTROL_CHANGE:
        return {first, lowByte(message.getControl()), lowByte(message.getValue())};
    case MIDI_PROGRAM_CHANGE:
        return {first, lowByte(message.getValue())};
    case MIDI_SYSEX: {
        Bytes whole = message.getSysExData();
        if (!whole.empty() && whole.back() != 0xF7) {
            whole.push_back(0xF7);
        }
        return whole;
    }
    default:
        return {};
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    std::array<unsigned char, 24> head{}; // Six numbers.
    const std::size_t headSize = std::min(size, head.size());
    std::copy_n(bytes, headSize, head.begin());
    const auto number = [&head](std::size_t n) {
        return qFromBigEndian<std::uint32_t>(&head[4 * n]);
    };
    QMidiMessage message;
    message.setStatus(static_cast<QMidiStatus>(number(0)))
        ->setChannel(number(1))
        ->setPitch(number(2))
        ->setVelocity(number(3))
        ->setControl(number(4))
        ->setValue(number(5));
    const Bytes rest(bytes + headSize, bytes + size);
    message.setSysExData(rest);
    const QMidiMessage unencoded(message);

    const Bytes encoded = message.getRawMessage();
    check(encoded == encodingOf(message), "the bytes are those of the status and the fields");
    check(QMidiMessage(unencoded).getRawMessage() == encoded, "a copy encodes to the same");
    if (!encoded.empty()) {
        message.setPitch(message.getPitch() + 1)->setValue(message.getValue() + 1);
        check(message.getRawMessage() == encoded, "the encoding is kept");
    }
    message.setRawMessage(rest);
    check(rest.empty() || message.getRawMessage() == rest, "raw bytes are kept as they are");
    message.clear();
    check(message.getRawMessage().empty() && message.getSysExData().empty() &&
              message.getChannel() == 1,
          "a cleared message is as a new one");
    return 0;
}
