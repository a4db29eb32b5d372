// SPDX-License-Identifier: MIT
#include "qmidiin.h"

#include "mididecoder.h"
#include "miditrace.h"
#include "qmidimessage.h"

#include <utility>

QMidiIn::QMidiIn(QObject* parent)
    : QObject(parent), MidiInput("RtMidi Input Client", "RtMidi Input", callback, this)
{
    qRegisterMetaType<QMidiMessage*>();
    hasBackEnd(); // Only now: its thread may use all members.
}

QMidiIn::~QMidiIn()
{
    dropBackEnd();
}

void QMidiIn::onMidiMessageReceive(QMidiMessage* message)
{
    message->moveToThread(thread());
    emit midiMessageReceived(message);
}

void QMidiIn::callback(double stampSeconds, std::vector<unsigned char>* bytes, void* port)
{
    if (bytes->empty()) {
        return;
    }
    traceReceived(stampSeconds, *bytes);
    auto* const self = static_cast<QMidiIn*>(port);
    {
        const std::lock_guard<std::mutex> lock(self->inboxLock);
        self->inbox.push_back({stampSeconds, *bytes});
    }
    QMetaObject::invokeMethod(self, "deliver", Qt::QueuedConnection);
}

void QMidiIn::deliver()
{
    Received next;
    {
        const std::lock_guard<std::mutex> lock(inboxLock);
        next = std::move(inbox.front());
        inbox.pop_front();
    }
    onMidiMessageReceive(decodeMidi(next.stampSeconds, next.bytes).get());
}
