// SPDX-License-Identifier: MIT
#pragma once

#include "midiport.h"

#include <QObject>

#include <deque>
#include <mutex>
#include <vector>

class QMidiMessage;

// A MIDI input port. Each message is traced on RtMidi's thread (see traceReceived()) and delivered
// on the port's, in order, by its event loop. What arrived before the port was closed is still
// delivered; what arrived before it was destroyed is not.
class QMidiIn : public QObject, public MidiInput
{
    Q_OBJECT

public:
    explicit QMidiIn(QObject* parent = nullptr);
    ~QMidiIn() override;

signals:
    // Emitted on the port's thread. The message goes away when all receivers have returned.
    void midiMessageReceived(QMidiMessage* message);

public:
    // Emits a message as if it had arrived here. The caller keeps it.
    void onMidiMessageReceive(QMidiMessage* message);

private:
    struct Received
    {
        double stampSeconds;
        std::vector<unsigned char> bytes;
    };

    static void callback(double stampSeconds, std::vector<unsigned char>* bytes, void* port);
    Q_INVOKABLE void deliver(); // Once for each message of the inbox.

    std::mutex inboxLock;
    std::deque<Received> inbox;
};
