// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <cstdint>
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
// are given unchecked and return the message, so that calls can be chained. Not thread-safe; an
// input port makes a message on RtMidi's thread and hands it over to the main thread.
class QMidiMessage : public QObject
{
    Q_OBJECT

public:
    explicit QMidiMessage(QObject* parent = nullptr);
    QMidiMessage(const QMidiMessage& other); // A copy without parent.
    QMidiMessage& operator=(const QMidiMessage&) = delete;

    [[nodiscard]] QMidiStatus getStatus() const;
    [[nodiscard]] std::uint32_t getChannel() const; // 1 to 16; 0 for system messages.
    [[nodiscard]] std::uint32_t getPitch() const; // Note number of note and key-pressure messages.
    [[nodiscard]] std::uint32_t getVelocity() const; // Of note messages.
    [[nodiscard]] std::uint32_t getControl() const;  // Controller number.
    [[nodiscard]] std::uint32_t
    getValue() const; // Controller, pressure, program or 14-bit pitch-bend value.
    [[nodiscard]] double
    getDeltaTime() const; // Milliseconds since the previous message of the input.
    [[nodiscard]] std::vector<unsigned char> getSysExData() const; // From 0xF0 onward.

    QMidiMessage* setStatus(QMidiStatus newStatus);
    QMidiMessage* setChannel(std::uint32_t newChannel);
    QMidiMessage* setPitch(std::uint32_t newPitch);
    QMidiMessage* setVelocity(std::uint32_t newVelocity);
    QMidiMessage* setControl(std::uint32_t newControl);
    QMidiMessage* setValue(std::uint32_t newValue);
    QMidiMessage* setDeltaTime(double milliseconds);
    QMidiMessage* setSysExData(std::vector<unsigned char> bytes);
    QMidiMessage* setRawMessage(std::vector<unsigned char> bytes);

    // Back to a new message's values; the raw bytes are forgotten.
    void clear();

    // The message as MIDI 1.0 bytes. Built from the fields at the first call and kept, so that
    // later field changes have no effect until clear() or setRawMessage(). Empty for statuses
    // without an encoding (pressure, pitch bend, unknown) and for empty System Exclusive data. A
    // missing 0xF7 is added at the end of System Exclusive data.
    std::vector<unsigned char> getRawMessage();

private:
    QMidiStatus status{};
    std::uint32_t channel = 1;
    std::uint32_t pitch = 0;
    std::uint32_t velocity = 0;
    std::uint32_t control = 0;
    std::uint32_t value = 0;
    double deltaTime = 0;
    std::vector<unsigned char> sysExData;
    std::vector<unsigned char> rawMessage;
};
