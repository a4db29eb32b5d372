// SPDX-License-Identifier: MIT
#pragma once

#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "servers.h"

#include <QCoreApplication>
#include <QTest>

#include <mutex>

// Other MIDI software: what the ports under test are connected to. Its names hold the number of the
// process, since over ALSA all tests share one sequencer.

using Bytes = std::vector<unsigned char>;

inline QString peerName(const QString& role)
{
    return QStringLiteral("velt %1 %2").arg(role).arg(QCoreApplication::applicationPid());
}

// How a port is shown that is named as its client; CoreMIDI knows of no clients.
inline QString peerPort(const QString& name)
{
    return kIsCoreMidi ? name : name + ':' + name;
}

struct PeerSource : MidiOutput
{
    PeerSource() : MidiOutput(name().toStdString(), {}) { openVirtualPort(name()); }
    static QString name() { return peerName(QStringLiteral("source")); }
    static QString port() { return peerPort(name()); }
};

// Keeps what arrives at its port.
class PeerSink : public MidiInput
{
public:
    PeerSink() : MidiInput(name().toStdString(), {}, keep, this)
    {
        setIgnoreTypes(false, false, false);
        openVirtualPort(name());
    }
    ~PeerSink() override { dropBackEnd(); }
    static QString name() { return peerName(QStringLiteral("sink")); }
    static QString port() { return peerPort(name()); }
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

// Ports under test, connected: `in` takes what `source` sends, and `sink` what `out` sends.
struct ConnectedPorts
{
    ConnectedPorts()
    {
        QObject::connect(&in, &QMidiIn::midiMessageReceived, &in, [this] { ++received; });
        open();
    }
    void open()
    {
        in.openPort(PeerSource::port());
        openByName(out, PeerSink::port());
        settle();
    }

    PeerSource source;
    PeerSink sink;
    QMidiIn in;
    QMidiOut out;
    int received = 0; // By `in`.
};
