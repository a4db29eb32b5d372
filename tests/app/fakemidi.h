// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <RtMidi.h>

#include <vector>

// ALSA with two inputs and two outputs, "First" and "Second". Included by one file of a test, whose
// constructors of RtMidi's classes take the place of RtMidi's own. Main thread only.
namespace FakeMidi {

inline QStringList calls; // Such as "RtMidi Input Client opens First 20:0 as RtMidi Input".
inline std::vector<std::vector<unsigned char>> sent;
inline const char* failing = ""; // "open" or "send": throws from now on.

inline void failIf(const char* what)
{
    if (qstrcmp(failing, what) == 0) {
        throw RtMidiError(std::string("no ") + what, RtMidiError::DRIVER_ERROR);
    }
}

template <class Api>
class Port : public Api
{
public:
    template <typename... Arguments>
    explicit Port(const std::string& clientName, Arguments... arguments)
        : Api(arguments...), client(QString::fromStdString(clientName))
    {
    }

    RtMidi::Api getCurrentApi() override { return RtMidi::LINUX_ALSA; }
    unsigned int getPortCount() override { return 2; }
    std::string getPortName(unsigned int index) override
    {
        return index == 0 ? "First 20:0" : "Second 24:0";
    }
    void openPort(unsigned int index, const std::string& name) override
    {
        failIf("open");
        calls << client + " opens " + QString::fromStdString(getPortName(index) + " as " + name);
        this->connected_ = true;
    }
    void closePort() override
    {
        calls << client + " closes";
        this->connected_ = false;
    }
    void openVirtualPort(const std::string&) override { failIf("open"); }
    void setClientName(const std::string&) override {}
    void setPortName(const std::string&) override {}

protected:
    void initialize(const std::string&) override {}

private:
    QString client;
};

class Output : public Port<MidiOutApi>
{
public:
    using Port::Port;
    void sendMessage(const unsigned char* bytes, std::size_t size) override
    {
        failIf("send");
        sent.emplace_back(bytes, bytes + size);
    }
};

} // namespace FakeMidi

RtMidiIn::RtMidiIn(RtMidi::Api, const std::string& clientName, unsigned int queueSize)
{
    rtapi_ = new FakeMidi::Port<MidiInApi>(clientName, queueSize);
}
RtMidiOut::RtMidiOut(RtMidi::Api, const std::string& clientName)
{
    rtapi_ = new FakeMidi::Output(clientName);
}
