// SPDX-License-Identifier: MIT
#include "check.h"
#include "qmidimessage.h"

// A message made of any fields and bytes: it encodes to what its status allows, once, and copies
// and raw bytes are kept as they are.

namespace {

using Bytes = std::vector<unsigned char>;

// Takes numbers off the front of an input.
class Numbers
{
public:
    Numbers(const std::uint8_t* bytes, std::size_t size) : at(bytes), end(bytes + size) {}

    std::uint32_t next()
    {
        std::uint32_t number = 0;
        for (int i = 0; i < 4; ++i) {
            number = number * 256 + (at == end ? 0U : *at++);
        }
        return number;
    }
    [[nodiscard]] Bytes rest() const { return {at, end}; }

private:
    const std::uint8_t* at;
    const std::uint8_t* end;
};

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
    Numbers numbers(bytes, size);
    QMidiMessage message;
    message.setStatus(static_cast<QMidiStatus>(numbers.next()))
        ->setChannel(numbers.next())
        ->setPitch(numbers.next())
        ->setVelocity(numbers.next())
        ->setControl(numbers.next())
        ->setValue(numbers.next());
    const Bytes rest = numbers.rest();
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
