// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <RtMidi.h>

#include <mutex>
#include <vector>

// Other MIDI software on the running JACK server, made of plain library objects: what the ports
// under test are connected to.

using Bytes = std::vector<unsigned char>;

// Sends from a port. Pace what you send: the library hangs on a full ring.
class PeerSource
{
public:
    PeerSource() { out.openVirtualPort("out"); }
    static QString port() { return QStringLiteral("velt source:out"); }
    void send(const Bytes& bytes) { out.sendMessage(&bytes); }

private:
    RtMidiOut out{RtMidi::UNIX_JACK, "velt source"};
};

// Keeps what arrives at its port.
class PeerSink
{
public:
    PeerSink()
    {
        in.ignoreTypes(false, false, false);
        in.setCallback(keep, this);
        in.openVirtualPort("in");
    }
    static QString port() { return QStringLiteral("velt sink:in"); }
    std::vector<Bytes> received()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return messages;
    }

private:
    static void keep(double, Bytes* bytes, void* sink)
    {
        auto* self = static_cast<PeerSink*>(sink);
        const std::lock_guard<std::mutex> lock(self->mutex);
        self->messages.push_back(*bytes);
    }

    std::mutex mutex;
    std::vector<Bytes> messages;
    RtMidiIn in{RtMidi::UNIX_JACK, "velt sink"}; // Last, so that it stops before the rest goes.
};

template <class OutPort>
void openByName(OutPort& out, const QString& name)
{
    out.openPort(static_cast<unsigned int>(out.getPorts().indexOf(name)));
}

// Waits for two cycles of the server: a connection just made carries messages from then on.
inline void settle()
{
    RtMidiOut out(RtMidi::UNIX_JACK, "velt settle");
    for (int i = 0; i < 2; ++i) {
        out.openVirtualPort("out");
        out.closePort(); // Which waits for a cycle.
    }
}
