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

std::size_t lengthOf(QMidiStatus status, const Bytes& sysEx)
{
    switch (status) {
    case MIDI_NOTE_OFF:
    case MIDI_NOTE_ON:
    case MIDI_CONTROL_CHANGE:
        return 3;
    case MIDI_PROGRAM_CHANGE:
        return 2;
    case MIDI_SYSEX:
        return sysEx.empty() ? 0 : sysEx.size() + (sysEx.back() == 0xF7 ? 0 : 1);
    default:
        return 0;
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
    check(encoded.size() == lengthOf(message.getStatus(), rest), "the length is the status's");
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
