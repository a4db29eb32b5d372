// SPDX-License-Identifier: MIT
#pragma once

#include "midiport.h"

#include <QObject>

#include <array>
#include <mutex>
#include <vector>

// The MIDI ports of the stand-in DAW and its foot switch, all virtual: one input that takes MMC,
// one output for the DAW's notes, one for the foot switch. Their names are the same every run,
// because each port has its own client (the MIDI server would number two clients of one name).
//
// Main thread only. RtMidi delivers input on its own thread; there each message gets its time
// and waits in the inbox until the main thread takes it.
class RehearsalPorts : public QObject
{
    Q_OBJECT

public:
    enum Out { DawNotes, FootSwitch };

    struct Message
    {
        qint64 timeUs; // Of arrival, CLOCK_MONOTONIC.
        std::vector<unsigned char> bytes;
    };
    struct Inbox
    {
        std::vector<Message> messages; // In the order of arrival.
        int dropped = 0;               // Messages that came when the inbox was full.
        qint64 takenUs = 0;            // No message of a later inbox is older than this.
    };

    explicit RehearsalPorts(QObject* parent = nullptr);
    ~RehearsalPorts() override;

    // Opens all three ports; false if there is no MIDI system that has them. Closes open ones
    // first, so it also finds a MIDI server that was started again.
    bool open();
    // Waits until what was sent last has left.
    void close();
    // False once the MIDI server has shut down.
    [[nodiscard]] bool isOpen() const;

    // As VELT shows them while the ports are open. Those of a second rehearsal are numbered.
    [[nodiscard]] QString inputName() const { return inputPortName; }
    [[nodiscard]] QString outputName(Out out) const { return outputNames.at(out); }

    // False if it was not sent, because there is no MIDI (any more).
    bool send(Out out, const std::vector<unsigned char>& bytes);

    // What has arrived since the last call.
    Inbox takeInbox();

signals:
    // There is something in the inbox. Emitted on RtMidi's thread: connect queued.
    void received();

private:
    static void callback(double, std::vector<unsigned char>* bytes, void* ports);

    std::mutex inboxLock;
    Inbox inbox;

    MidiInput input;
    QString inputPortName;
    std::array<MidiOutput, 2> outputs;
    std::array<QString, 2> outputNames;
    qint64 sentUs = 0;
};
