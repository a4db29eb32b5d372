// SPDX-License-Identifier: MIT
#include "qmidiout.h"

#include "jackguard.h"
#include "midibackend.h"
#include "qmidimessage.h"

#include <QDebug>

namespace {

constexpr auto kClientName = "RtMidi Output Client";
constexpr auto kPortName = "RtMidi Output";

std::vector<unsigned char> noteBytes(QMidiStatus status, std::uint32_t channel, std::uint32_t pitch,
                                     std::uint32_t velocity)
{
    return QMidiMessage()
        .setStatus(status)
        ->setChannel(channel)
        ->setPitch(pitch)
        ->setVelocity(velocity)
        ->getRawMessage();
}

} // namespace

QMidiOut::QMidiOut(QObject* parent) : QObject(parent)
{
    backEndOrNull();
}

QMidiOut::~QMidiOut() = default;

QStringList QMidiOut::getPorts()
{
    RtMidiOut* midi = backEndOrNull();
    return midi ? portNames(*midi) : QStringList();
}

void QMidiOut::openPort(unsigned int index)
{
    openChecked(backEndOrThrow(), index, kPortName);
    startGuard();
}

void QMidiOut::openVirtualPort(const QString& name)
{
    backEndOrThrow().openVirtualPort(name.toStdString());
    hasVirtualPort = true;
    startGuard();
}

void QMidiOut::closePort()
{
    hasVirtualPort = false;
    if (backEnd) {
        backEnd->closePort();
    }
}

bool QMidiOut::isPortOpen() const
{
    return backEnd && backEnd->isPortOpen();
}

void QMidiOut::sendNoteOn(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity)
{
    sendRawMessage(noteBytes(MIDI_NOTE_ON, channel, pitch, velocity));
}

void QMidiOut::sendNoteOff(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity)
{
    sendRawMessage(noteBytes(MIDI_NOTE_OFF, channel, pitch, velocity));
}

void QMidiOut::sendRawMessage(const std::vector<unsigned char>& bytes)
{
    if (bytes.empty() || !(isPortOpen() || hasVirtualPort)) {
        return;
    }
    if (guard && !guard->admit(bytes.size())) {
        return;
    }
    backEnd->sendMessage(&bytes);
}

void QMidiOut::sendMessage(QMidiMessage* message)
{
    const std::vector<unsigned char> bytes = message->getRawMessage();
    if (bytes.empty()) {
        return;
    }
    qDebug() << "send message" << static_cast<int>(bytes.front());
    sendRawMessage(bytes);
}

void QMidiOut::dropBackEnd()
{
    hasVirtualPort = false;
    guard.reset();
    backEnd.reset();
}

void QMidiOut::startGuard()
{
    if (backEnd->getCurrentApi() != RtMidi::UNIX_JACK) {
        return; // The other back ends hand each message to the system before they return.
    }
    if (!guard) {
        guard = std::make_unique<JackGuard>();
    }
    guard->portOpened();
}

RtMidiOut& QMidiOut::backEndOrThrow()
{
    if (!backEnd) {
        backEnd = makeBackEnd<RtMidiOut>(kClientName);
    }
    return *backEnd;
}

RtMidiOut* QMidiOut::backEndOrNull()
{
    try {
        return &backEndOrThrow();
    } catch (const RtMidiError&) {
        return nullptr;
    }
}
