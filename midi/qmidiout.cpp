// SPDX-License-Identifier: MIT
#include "qmidiout.h"

#include "jackguard.h"
#include "jackwatch.h"
#include "midibackend.h"
#include "qmidimessage.h"

#include <QDebug>

#include <utility>

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

QMidiOut::~QMidiOut()
{
    dropBackEnd();
}

QStringList QMidiOut::getPorts()
{
    RtMidiOut* midi = backEndOrNull();
    return midi ? portNames(*midi) : QStringList();
}

void QMidiOut::openPort(unsigned int index)
{
    openChecked(backEndOrThrow(), index, kPortName);
    portOpened();
}

void QMidiOut::openVirtualPort(const QString& name)
{
    backEndOrThrow().openVirtualPort(name.toStdString());
    hasVirtualPort = true;
    portOpened();
}

void QMidiOut::closePort()
{
    hasVirtualPort = false;
    if (backEnd && !closeQuietly(*backEnd, watch)) {
        dropBackEnd();
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
    letGo(std::move(backEnd));
    watch.reset();
}

void QMidiOut::portOpened()
{
    if (!watch && (watch = JackWatch::ofProcess(backEnd->getCurrentApi()))) {
        guard = std::make_unique<JackGuard>(watch);
    }
    if (guard) {
        watch->graphChanged();
        guard->portOpened();
    }
}

RtMidiOut& QMidiOut::backEndOrThrow()
{
    JackWatch::requireAnswer();
    if (!backEnd) {
        backEnd = makeBackEnd<RtMidiOut>(kClientName);
    }
    return *backEnd;
}

RtMidiOut* QMidiOut::backEndOrNull()
{
    try {
        return backEnd ? backEnd.get() : &backEndOrThrow();
    } catch (const RtMidiError&) {
        return nullptr;
    }
}
