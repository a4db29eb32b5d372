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
constexpr qint64 kBoundedMs = 5000; // The library gives a dead server a second for each port.

qint64 elapsedMs(const std::function<void()>& act)
{
    QElapsedTimer timer;
    timer.start();
    act();
    return timer.elapsed();
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
    void initTestCase()
    {
        const JackServer first;
        if (!first.isRunning()) {
            QSKIP(qPrintable(first.why()));
        }
    }
    void init()
    {
        TestCase::init();
        server = std::make_unique<JackServer>();
        QVERIFY2(server->isRunning(), qPrintable(server->why()));
    }
    void cleanup()
    {
        server.reset();
        TestCase::cleanup();
    }

    void sendingToADeadServerReturns()
    {
        const PeerSink sink;
        QMidiOut out;
        openByName(out, PeerSink::port());
        server->kill();
        expectWarning("JACK server does not answer");
        const qint64 tookMs = elapsedMs([&] {
            for (int i = 0; i < 2000; ++i) { // The library would hang at the 1,638th.
                out.sendRawMessage(kMmcStop);
            }
        });
        QVERIFY2(tookMs < kBoundedMs, qPrintable(QString::number(tookMs)));
    }

    void closingAndDestroyingOnADeadServerIsBounded()
    {
        const PeerSink sink;
        const PeerSource source;
        auto in = std::make_unique<QMidiIn>();
        auto out = std::make_unique<QMidiOut>();
        QMidiOut closed;
        QMidiOut dropped;
        in->openPort(PeerSource::port());
        for (QMidiOut* port : {out.get(), &closed, &dropped}) {
            openByName(*port, PeerSink::port());
        }
        server->kill();
        QVERIFY(elapsedMs([&] { closed.closePort(); }) < kBoundedMs);
        QVERIFY(elapsedMs([&] { dropped.dropBackEnd(); }) < kBoundedMs);
        QVERIFY(elapsedMs([&] { out.reset(); }) < kBoundedMs);
        QVERIFY(elapsedMs([&] { in.reset(); }) < kBoundedMs);
        QVERIFY_EXCEPTION_THROWN(openByName(closed, PeerSink::port()), RtMidiError);
        QVERIFY(!closed.isPortOpen() && !dropped.isPortOpen());
    }

    void allPortsWorkAgainAfterARestart()
    {
        QMidiIn daw;
        QMidiIn controller;
        QMidiOut out;
        int received = 0;
        connect(&daw, &QMidiIn::midiMessageReceived, this, [&] { ++received; });
        connect(&controller, &QMidiIn::midiMessageReceived, this, [&] { ++received; });
        // Thrice, since what an old connection leaves behind is felt at the one after.
        for (int life = 1; life <= 3; ++life) {
            auto source = std::make_unique<PeerSource>();
            auto sink = std::make_unique<PeerSink>();
            daw.openPort(PeerSource::port());
            controller.openPort(PeerSource::port());
            openByName(out, PeerSink::port());
            settle();
            source->send({0x80, 24, 0});
            QTRY_COMPARE(received, 2 * life);
            out.sendRawMessage(kMmcStop);
            QTRY_COMPARE(sink->received(), std::vector<Bytes>{kMmcStop});
            server->kill();
            source.reset();
            sink.reset();
            daw.dropBackEnd();
            controller.dropBackEnd();
            out.dropBackEnd();
            QVERIFY(!daw.isPortOpen() && !controller.isPortOpen() && !out.isPortOpen());
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
        const qint64 tookMs = elapsedMs([&] {
            for (int i = 0; i < 2000; ++i) {
                out.sendRawMessage(kMmcStop);
            }
        });
        isStuck = false;
        QVERIFY2(tookMs < 2 * kBoundedMs, qPrintable(QString::number(tookMs)));
        QTRY_VERIFY(!sink.received().empty()); // What the ring held when the server went on.
        QVERIFY(sink.received().size() < 2000);

        out.closePort();
        openByName(out, PeerSink::port());
        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        out.sendRawMessage(play);
        QTRY_COMPARE(sink.received().back(), play);
    }
};

VELT_TEST_MAIN(TestMidiServerDeath)
#include "tst_midiserverdeath.moc"
