// SPDX-License-Identifier: MIT
#include "midiport.h"

#include "midibackend.h"
#include "portnames.h"

#include <utility>

namespace {

QStringList portNames(RtMidi& midi)
{
    QStringList names;
    for (unsigned int index = 0; index < midi.getPortCount(); ++index) {
        names.append(QString::fromStdString(midi.getPortName(index)));
    }
    return names;
}

} // namespace

MidiPort::MidiPort(std::string ofClient, std::string ofPort)
    : clientName(std::move(ofClient)), portName(std::move(ofPort))
{
}

QStringList MidiPort::getPorts()
{
    return hasBackEnd() ? shownPortNames(backEnd.api, portNames(*backEnd.midi)) : QStringList();
}

int MidiPort::indexOf(const QString& name)
{
    const QStringList names = portNames(requireBackEnd());
    return indexOfPort(backEnd.api, names, name);
}

bool MidiPort::isSystemRunning()
{
    return hasBackEnd() && (backEnd.api != RtMidi::UNIX_JACK || JackLink::isServerRunning());
}

QString MidiPort::systemName()
{
    if (!hasBackEnd()) {
        return {};
    }
    switch (backEnd.api) {
    case RtMidi::LINUX_ALSA:
        return QStringLiteral("ALSA");
    case RtMidi::UNIX_JACK:
        return QStringLiteral("JACK");
    case RtMidi::MACOSX_CORE:
        return QStringLiteral("CoreMIDI");
    default:
        return QString::fromStdString(RtMidi::getApiDisplayName(backEnd.api));
    }
}

void MidiPort::openPort(unsigned int index)
{
    RtMidi& midi = requireBackEnd();
    if (index >= midi.getPortCount()) { // RtMidi does not check that over JACK.
        throw RtMidiError("There is no MIDI port of the number " + std::to_string(index) + ".",
                          RtMidiError::INVALID_PARAMETER);
    }
    midi.openPort(index, portName);
    portOpened();
}

void MidiPort::openVirtualPort(const QString& name)
{
    requireBackEnd().openVirtualPort(name.toStdString());
    hasVirtualPort = true;
    portOpened();
}

void MidiPort::portOpened()
{
    if (backEnd.api == RtMidi::UNIX_JACK) {
        link.portOpened();
    }
}

void MidiPort::closePort()
{
    hasVirtualPort = false;
    if (backEnd.midi && !JackLink::closePort(*backEnd.midi)) {
        dropBackEnd();
    }
}

bool MidiPort::isPortOpen() const
{
    return backEnd.midi && backEnd.midi->isPortOpen();
}

void MidiPort::dropBackEnd()
{
    hasVirtualPort = false;
    link.destroy(std::exchange(backEnd, {}).midi);
}

RtMidi& MidiPort::requireBackEnd()
{
    JackLink::requireServer();
    if (!backEnd.midi) {
        backEnd = construct(clientName);
    }
    return *backEnd.midi;
}

bool MidiPort::hasBackEnd()
{
    try {
        requireBackEnd();
        return true;
    } catch (const RtMidiError&) {
        return false;
    }
}

MidiInput::MidiInput(std::string ofClient, std::string ofPort, RtMidiIn::RtMidiCallback callback,
                     void* userData)
    : MidiPort(std::move(ofClient), std::move(ofPort)), receive(callback), receiver(userData)
{
}

void MidiInput::openPort(const QString& name)
{
    const int index = indexOf(name);
    if (index >= 0) {
        openPort(static_cast<unsigned int>(index));
    }
}

void MidiInput::setIgnoreTypes(bool sysEx, bool timing, bool activeSensing)
{
    ignored = {sysEx, timing, activeSensing};
    if (midi()) {
        static_cast<RtMidiIn*>(midi())->ignoreTypes(sysEx, timing, activeSensing);
    }
}

MidiPort::BackEnd MidiInput::construct(const std::string& client)
{
    const std::shared_ptr<RtMidiIn> input = makeBackEnd<RtMidiIn>(client);
    input->setCallback(receive, receiver);
    input->ignoreTypes(ignored.sysEx, ignored.timing, ignored.activeSensing);
    return {input, input->getCurrentApi()};
}

MidiOutput::MidiOutput(std::string ofClient, std::string ofPort)
    : MidiPort(std::move(ofClient), std::move(ofPort))
{
}

bool MidiOutput::send(const std::vector<unsigned char>& bytes)
{
    if (bytes.empty() || !hasOpenPort() || !link.canSend(bytes.size())) {
        return false;
    }
    static_cast<RtMidiOut*>(midi())->sendMessage(&bytes);
    return true;
}

MidiPort::BackEnd MidiOutput::construct(const std::string& client)
{
    const std::shared_ptr<RtMidiOut> output = makeBackEnd<RtMidiOut>(client);
    return {output, output->getCurrentApi()};
}
