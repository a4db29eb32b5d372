// SPDX-License-Identifier: MIT
#include "scriptedmidi.h"

#include <RtMidi.h>

namespace {

using ScriptedMidi::state;

void raise(const QString& error)
{
    if (!error.isEmpty()) {
        throw RtMidiError(error.toStdString(), RtMidiError::DRIVER_ERROR);
    }
}

template <class RtMidiBase>
class Scripted : public RtMidiBase
{
public:
    template <class... Args>
    explicit Scripted(const std::string& client, Args... args)
        : RtMidiBase(args...), name(QString::fromStdString(client))
    {
    }

    RtMidi::Api getCurrentApi() override { return RtMidi::RTMIDI_DUMMY; }
    void openPort(unsigned int index, const std::string& port) override
    {
        raise(state.openError);
        this->connected_ = true;
        record(QString("open %1 as %2").arg(index).arg(QString::fromStdString(port)));
    }
    void openVirtualPort(const std::string&) override { raise(state.openError); }
    void closePort() override
    {
        this->connected_ = false;
        record("close");
    }
    void setClientName(const std::string&) override {}
    void setPortName(const std::string&) override {}
    unsigned int getPortCount() override { return unsigned(state.ports.size()); }
    std::string getPortName(unsigned int index) override
    {
        return state.ports.value(int(index)).toStdString();
    }

protected:
    void record(const QString& call) { state.calls << name + ": " + call; }
    void initialize(const std::string&) override {}

private:
    QString name;
};

class ScriptedOut : public Scripted<MidiOutApi>
{
public:
    using Scripted::Scripted;
    void sendMessage(const unsigned char* message, size_t size) override
    {
        raise(state.sendError);
        const QByteArray bytes(reinterpret_cast<const char*>(message), int(size));
        record("send " + bytes.toHex(' ').toUpper());
    }
};

} // namespace

RtMidiIn::RtMidiIn(RtMidi::Api, const std::string& clientName, unsigned int queueSizeLimit)
{
    rtapi_ = new Scripted<MidiInApi>(clientName, queueSizeLimit);
}

RtMidiOut::RtMidiOut(RtMidi::Api, const std::string& clientName)
{
    rtapi_ = new ScriptedOut(clientName);
}
