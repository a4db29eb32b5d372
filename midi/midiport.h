// SPDX-License-Identifier: MIT
#pragma once

#include "jack/jacklink.h"

#include <QString>
#include <QStringList>

#include <RtMidi.h>

#include <memory>
#include <string>
#include <vector>

// What an input and an output port have in common: an RtMidi object, constructed when it is first
// needed and again after dropBackEnd().
//
// Errors of RtMidi arrive as its exception RtMidiError out of the open and close operations. Where
// no MIDI back end can be constructed, a port has none: it lists no ports, is never open, and each
// attempt to open it tries again and throws. The same holds for a JACK server that is stalled.
//
// Main thread only.
class MidiPort
{
public:
    MidiPort(const MidiPort&) = delete;
    MidiPort& operator=(const MidiPort&) = delete;

    // The names of the ports that can be opened now, see shownPortNames().
    [[nodiscard]] QStringList getPorts();
    // The index of the port that a stored name stands for, or -1, see indexOfPort(). Throws
    // RtMidiError where there is no back end.
    [[nodiscard]] int indexOf(const QString& name);
    // "ALSA", "JACK" or "CoreMIDI"; empty where there is no back end. "JACK" also where no JACK
    // server runs and there is no other MIDI system.
    [[nodiscard]] QString systemName();
    // False where no MIDI system runs: no back end can be had, or JACK has no server. Only for a
    // process that has opened no port.
    [[nodiscard]] bool isSystemRunning();
    void openPort(unsigned int index);
    void openVirtualPort(const QString& name);
    void closePort();
    [[nodiscard]] bool isPortOpen() const;
    // False once the server of an open port has shut down.
    [[nodiscard]] bool isServerAlive() const { return link.isServerAlive(); }

    // Gives up the connection to the MIDI system. After a MIDI server has died, its RtMidi objects
    // never work again, and new ones may be made only when all of them are gone: drop the back ends
    // of all ports of the process first, then open. Takes a second if the server of an output died,
    // and two if it is stalled; so do closePort() and the destructor.
    void dropBackEnd();

protected:
    // Other MIDI software sees the ports as the port `ofPort` of a client `ofClient`.
    MidiPort(std::string ofClient, std::string ofPort);
    virtual ~MidiPort() = default; // Each derived class drops the back end first in its own.

    struct BackEnd
    {
        std::shared_ptr<RtMidi> midi; // Null where there is none.
        RtMidi::Api api = RtMidi::UNSPECIFIED;
    };
    // Throws RtMidiError.
    virtual BackEnd construct(const std::string& client) = 0;
    // True if there is a back end, or one can be constructed now.
    bool hasBackEnd();
    [[nodiscard]] RtMidi* midi() const { return backEnd.midi.get(); }
    [[nodiscard]] bool hasOpenPort() const { return isPortOpen() || hasVirtualPort; }

    JackLink link;

private:
    RtMidi& requireBackEnd();
    void portOpened();

    std::string clientName;
    std::string portName;
    BackEnd backEnd;
    bool hasVirtualPort = false; // RtMidi does not count it as open.
};

// An input whose messages arrive at a callback, on RtMidi's thread.
class MidiInput : public MidiPort
{
public:
    MidiInput(std::string ofClient, std::string ofPort, RtMidiIn::RtMidiCallback callback,
              void* userData);
    ~MidiInput() override { dropBackEnd(); }

    using MidiPort::openPort;
    // A name that no port has opens nothing and is no error.
    void openPort(const QString& name);
    // What RtMidi drops; by default all three.
    void setIgnoreTypes(bool sysEx, bool timing, bool activeSensing);

private:
    BackEnd construct(const std::string& client) final;

    RtMidiIn::RtMidiCallback receive;
    void* receiver;
    struct
    {
        bool sysEx = true;
        bool timing = true;
        bool activeSensing = true;
    } ignored;
};

// An output.
class MidiOutput : public MidiPort
{
public:
    MidiOutput(std::string ofClient, std::string ofPort);
    ~MidiOutput() override { dropBackEnd(); }

    // False if the message was not sent: it is empty, no port is open (RtMidi would keep it for a
    // later connection), or the JACK server takes nothing.
    bool send(const std::vector<unsigned char>& bytes);

private:
    BackEnd construct(const std::string& client) final;
};
