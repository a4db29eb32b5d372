// SPDX-License-Identifier: MIT
#include "mididecoder.h"
#include "check.h"
#include "qmidimessage.h"

// A message as the MIDI library delivers it, complete or not: fields keep their ranges, and where
// the message can be sent again it is the same.

using Bytes = std::vector<unsigned char>;

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size == 0) {
        return 0; // Input ports drop it.
    }
    const Bytes received(bytes, bytes + size);
    const auto message = decodeMidi(0.5, received);
    const QMidiStatus status = message->getStatus();
    const bool isSystem = received[0] >= 0xF0;
    check(status == (isSystem ? received[0] : received[0] & 0xF0U), "the status fits");
    check(message->getChannel() == (isSystem ? 0U : received[0] % 16 + 1U), "the channel fits");
    check(message->getPitch() < 256 && message->getVelocity() < 256 && message->getControl() < 256,
          "fields hold a byte");
    check(message->getValue() < (status == MIDI_PITCH_BEND ? 129U * 256 : 256U),
          "the value holds a byte, or two of a pitch bend");
    check(message->getSysExData() == (status == MIDI_SYSEX ? received : Bytes()),
          "system-exclusive data is whole");
    const Bytes sent = message->getRawMessage();
    Bytes expected = received;
    if (status != MIDI_SYSEX) {
        expected.resize(sent.size()); // With zeros where data is missing.
    } else if (received.back() != 0xF7) {
        expected.push_back(0xF7);
    }
    check(sent == expected, "it is sent as it came");
    return 0;
}
