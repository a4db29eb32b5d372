// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <cstdint>
#include <utility>
#include <vector>

// Status bytes of MIDI 1.0 with the channel nibble cleared. A received system message other than
// System Exclusive keeps its full status byte, which has no name here.
enum QMidiStatus : std::uint32_t {
    MIDI_NOTE_OFF = 0x80,
    MIDI_NOTE_ON = 0x90,
    MIDI_KEY_PRESSURE = 0xA0,
    MIDI_CONTROL_CHANGE = 0xB0,
    MIDI_PROGRAM_CHANGE = 0xC0,
    MIDI_CHANNEL_PRESSURE = 0xD0,
    MIDI_PITCH_BEND = 0xE0,
    MIDI_SYSEX = 0xF0
};

// One MIDI message, as decoded fields and, once asked for, as raw bytes. Setters store what they
// are given unchecked and return the message, so that calls can be chained. Not thread-safe.
class QMidiMessage : public QObject
{
    Q_OBJECT

public:
    using Bytes = std::vector<unsigned char>;

    explicit QMidiMessage(QObject* parent = nullptr);
    QMidiMessage(const QMidiMessage& other); // A copy without parent.
    QMidiMessage& operator=(const QMidiMessage&) = delete;

    [[nodiscard]] QMidiStatus getStatus() const { return fields.status; }
    [[nodiscard]] std::uint32_t getChannel() const { return fields.channel; }
    [[nodiscard]] std::uint32_t getPitch() const { return fields.pitch; }
    [[nodiscard]] std::uint32_t getVelocity() const { return fields.velocity; }
    [[nodiscard]] std::uint32_t getControl() const { return fields.control; }
    [[nodiscard]] std::uint32_t getValue() const { return fields.value; }
    [[nodiscard]] double getDeltaTime() const { return fields.deltaTime; }
    [[nodiscard]] Bytes getSysExData() const { return fields.sysExData; }

    QMidiMessage* setStatus(QMidiStatus status) { return set(fields.status, status); }
    QMidiMessage* setChannel(std::uint32_t channel) { return set(fields.channel, channel); }
    QMidiMessage* setPitch(std::uint32_t pitch) { return set(fields.pitch, pitch); }
    QMidiMessage* setVelocity(std::uint32_t velocity) { return set(fields.velocity, velocity); }
    QMidiMessage* setControl(std::uint32_t control) { return set(fields.control, control); }
    QMidiMessage* setValue(std::uint32_t value) { return set(fields.value, value); }
    QMidiMessage* setDeltaTime(double ms) { return set(fields.deltaTime, ms); }
    QMidiMessage* setSysExData(Bytes bytes) { return set(fields.sysExData, std::move(bytes)); }
    QMidiMessage* setRawMessage(Bytes bytes) { return set(fields.rawMessage, std::move(bytes)); }

    // Back to a new message's values; the raw bytes are forgotten.
    void clear() { fields = {}; }

    // The message as MIDI 1.0 bytes. Built from the fields at the first call and kept, so that
    // later field changes have no effect until clear() or setRawMessage(). Empty for statuses
    // without an encoding (pressure, pitch bend, unknown) and for empty System Exclusive data. A
    // missing 0xF7 is added at the end of System Exclusive data.
    Bytes getRawMessage();

private:
    struct Fields
    {
        QMidiStatus status{};
        std::uint32_t channel = 1;  // 1 to 16; 0 for system messages.
        std::uint32_t pitch = 0;    // Note number of note and key-pressure messages.
        std::uint32_t velocity = 0; // Of note messages.
        std::uint32_t control = 0;  // Controller number.
        std::uint32_t value = 0;    // Controller, pressure, program or 14-bit pitch-bend value.
        double deltaTime = 0;       // Milliseconds since the previous message of the input.
        Bytes sysExData;            // From 0xF0 onward.
        Bytes rawMessage;
    };

    template <class Value>
    QMidiMessage* set(Value& field, Value value)
    {
        field = std::move(value);
        return this;
    }

    Fields fields;
};
