// SPDX-License-Identifier: MIT
#include "midipeer.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"

#include <QElapsedTimer>

#include <atomic>
#include <thread>

namespace {

const Bytes kMmcStop{0xF0, 0x7F, 0x7F, 0x06, 0x01, 0xF7};

// The library gives a dead server a second for each port.
bool isBounded(const std::function<void()>& act)
{
    constexpr qint64 kBoundedMs = 5000;
    QElapsedTimer timer;
    timer.start();
    act();
    return timer.elapsed() < kBoundedMs;
}

void sendMany(QMidiOut& out)
{
    for (int i = 0; i < 2000; ++i) { // The library would hang at the 1,638th.
        out.sendRawMessage(kMmcStop);
    }
}

std::atomic<bool> isStuck{false};

// A callback that stops its client in the middle of a cycle, and the server with it.
void stick(double, Bytes*, void*)
{
    isStuck = true;
    while (isStuck) {
        std::this_thread::yield();
    }
}

} // namespace

class TestMidiServerDeath : public TestCase
{
    Q_OBJECT

    std::unique_ptr<JackServer> server;

private slots:
    void init()
    {
        TestCase::init();
        server.reset();
        server = std::make_unique<JackServer>();
        if (!server->isRunning()) {
            QSKIP(qPrintable(server->why()));
        }
    }

    void allPortsWorkAgainAfterARestart()
    {
        QMidiIn in;
        QMidiOut out;
        int received = 0;
        connect(&in, &QMidiIn::midiMessageReceived, this, [&] { ++received; });
        // Thrice, since what an old connection leaves behind is felt at the one after.
        for (int life = 1; life <= 3; ++life) {
            auto source = std::make_unique<PeerSource>();
            auto sink = std::make_unique<PeerSink>();
            in.openPort(PeerSource::port());
            openByName(out, PeerSink::port());
            settle();
            source->send({0x80, 24, 0});
            QTRY_COMPARE(received, life);
            out.sendRawMessage(kMmcStop);
            QTRY_COMPARE(sink->received(), std::vector<Bytes>{kMmcStop});

            server->kill();
            expectWarning("JACK server does not answer");
            QVERIFY(isBounded([&] { sendMany(out); }));
            QVERIFY(isBounded([&] { out.closePort(); }));
            QVERIFY_EXCEPTION_THROWN(openByName(out, PeerSink::port()), RtMidiError);
            source.reset();
            sink.reset();
            QVERIFY(isBounded([&] { out.dropBackEnd(); }));
            QVERIFY(isBounded([&] { in.dropBackEnd(); }));
            QVERIFY(!in.isPortOpen() && !out.isPortOpen());
            QVERIFY2(server->restart(), qPrintable(server->why()));
        }
    }

    void aServerThatStandsStillIsNoticed()
    {
        PeerSink sink;
        PeerSource source;
        RtMidiIn stuck(RtMidi::UNIX_JACK, "velt stuck");
        stuck.setCallback(stick);
        stuck.openPort(0); // The only source.
        QMidiOut out;
        openByName(out, PeerSink::port());
        source.send({0x90, 1, 1});
        QTRY_VERIFY(isStuck);
        expectWarning("JACK server does not answer");
        const bool wasBounded = isBounded([&] { sendMany(out); });
        isStuck = false;
        QVERIFY(wasBounded);

        openByName(out, PeerSink::port()); // Which asks the server again.
        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        out.sendRawMessage(play);
        QTRY_VERIFY(!sink.received().empty() && sink.received().back() == play);
    }
};

VELT_TEST_MAIN(TestMidiServerDeath)
#include "tst_midiserverdeath.moc"
