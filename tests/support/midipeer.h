// SPDX-License-Identifier: MIT
#pragma once

#include "jackwatch.h"

#include <QString>
#include <QTest>

#include <RtMidi.h>

#include <vector>

// Other MIDI software on the running JACK server, made of plain library objects: what the ports
// under test are connected to.

using Bytes = std::vector<unsigned char>;

// Sends from a port. Pace what you send: the library hangs on a full ring.
struct PeerSource
{
    PeerSource()
    {
        out.openVirtualPort("out");
        watch = JackWatch::ofProcess(RtMidi::UNIX_JACK);
    }
    ~PeerSource()
    {
        const QuietGraph quiet(watch);
        out.closePort();
    }
    static QString port() { return QStringLiteral("velt source:out"); }
    void send(const Bytes& bytes) { out.sendMessage(&bytes); }

    std::shared_ptr<JackWatch> watch;
    RtMidiOut out{RtMidi::UNIX_JACK, "velt source"};
};

// Keeps what arrives at its port.
struct PeerSink
{
    PeerSink()
    {
        in.ignoreTypes(false, false, false);
        in.openVirtualPort("in");
        watch = JackWatch::ofProcess(RtMidi::UNIX_JACK);
    }
    ~PeerSink()
    {
        const QuietGraph quiet(watch);
        in.closePort();
    }
    static QString port() { return QStringLiteral("velt sink:in"); }
    const std::vector<Bytes>& received()
    {
        Bytes next;
        for (in.getMessage(&next); !next.empty(); in.getMessage(&next)) {
            messages.push_back(next);
        }
        return messages;
    }

    std::shared_ptr<JackWatch> watch;
    RtMidiIn in{RtMidi::UNIX_JACK, "velt sink", 10000};
    std::vector<Bytes> messages;
};

template <class OutPort>
void openByName(OutPort& out, const QString& name)
{
    out.openPort(static_cast<unsigned int>(out.getPorts().indexOf(name)));
}

// Waits for two periods of the server: a connection just made carries messages from then on.
inline void settle()
{
    const auto watch = JackWatch::ofProcess(RtMidi::UNIX_JACK);
    QVERIFY(watch && watch->waitForPeriods(watch->periods(), 2));
}
