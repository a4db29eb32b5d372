// SPDX-License-Identifier: MIT
#pragma once

#include "midiport.h"

#include <QTest>

#include <mutex>

// Other MIDI software: what the ports under test are connected to.

using Bytes = std::vector<unsigned char>;

// Sends from a port that appears as "velt source:out" over JACK.
struct PeerSource : MidiOutput
{
    PeerSource() : MidiOutput("velt source", {}) { openVirtualPort(QStringLiteral("out")); }
    static QString port() { return QStringLiteral("velt source:out"); }
};

// Keeps what arrives at its port, "velt sink:in" over JACK.
class PeerSink : public MidiInput
{
public:
    PeerSink() : MidiInput("velt sink", {}, keep, this)
    {
        setIgnoreTypes(false, false, false);
        openVirtualPort(QStringLiteral("in"));
    }
    ~PeerSink() override { dropBackEnd(); }
    static QString port() { return QStringLiteral("velt sink:in"); }
    std::vector<Bytes> received()
    {
        const std::lock_guard<std::mutex> guard(lock);
        return messages;
    }

private:
    static void keep(double, std::vector<unsigned char>* bytes, void* sink)
    {
        auto* const self = static_cast<PeerSink*>(sink);
        const std::lock_guard<std::mutex> guard(self->lock);
        self->messages.push_back(*bytes);
    }

    std::mutex lock;
    std::vector<Bytes> messages;
};

template <class OutPort>
void openByName(OutPort& out, const QString& name)
{
    out.openPort(static_cast<unsigned int>(out.getPorts().indexOf(name)));
}

// Waits until a connection just made carries messages, as the first message of a new port does.
inline void settle()
{
    MidiOutput probe("velt probe", {});
    probe.openVirtualPort(QStringLiteral("probe"));
    QVERIFY(probe.send({0xFE}));
}
