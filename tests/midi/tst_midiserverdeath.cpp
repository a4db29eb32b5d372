// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "midipeer.h"
#include "midiports.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"

#include <QElapsedTimer>
#include <QThread>

#include <thread>

namespace {

const Bytes kMmcStop{0xF0, 0x7F, 0x7F, 0x06, 0x01, 0xF7};
const Bytes kMmcPlay{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};

// RtMidi gives a dead server a second for each port; a stalled one gets two.
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
    for (int i = 0; i < 2000; ++i) { // RtMidi would hang at the 1,638th.
        out.sendRawMessage(kMmcStop);
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
        SKIP_WITHOUT(*server);
    }

    void aServerThatStallsAtOnceHoldsNothingUp()
    {
        QMidiIn in;
        in.openVirtualPort("in");
        server->suspend(true);
        QVERIFY(isBounded([&] { in.closePort(); }));
    }

    void theProgramsPortsComeBack()
    {
        EditData names;
        names.MidiInPort = names.ShortcutMidiInPort = PeerSource::port();
        names.MidiOutPort = PeerSink::port();
        QObject parent;
        MidiPorts ports(names, &parent);
        int received = 0;
        connect(ports.midiIn, &QMidiIn::midiMessageReceived, this, [&] { ++received; });
        // Thrice, since what an old connection leaves shows at the one after next.
        for (int life = 1; life <= 3; ++life) {
            auto source = std::make_unique<PeerSource>();
            auto sink = std::make_unique<PeerSink>();
            QVERIFY(ports.reopen().empty());
            QVERIFY(ports.shortcutMidiIn->isPortOpen());
            settle();
            source->send({0x80, 24, 0});
            QTRY_COMPARE(received, life);
            ports.midiOut->sendRawMessage(kMmcStop);
            QTRY_COMPARE(sink->received(), std::vector<Bytes>{kMmcStop});

            server->kill();
            expectWarning("JACK server does not answer");
            QVERIFY(isBounded([&] { sendMany(*ports.midiOut); }));
            source.reset(); // No new client while any of this process is left.
            sink.reset();
            QStringList titles;
            QVERIFY(isBounded([&] {
                for (const MidiPorts::Problem& problem : ports.reopen()) {
                    titles << problem.title;
                }
            }));
            QCOMPARE(titles, (QStringList{"Midi In Open Error", "Shortcut Midi In Open Error",
                                          "Midi Out Open Error"}));
            QVERIFY(!ports.midiIn->isPortOpen() && !ports.midiOut->isPortOpen());
            QVERIFY2(server->restart(), qPrintable(server->why()));
        }
    }

    void aStalledServerHoldsNothingUp()
    {
        ConnectedPorts ports;
        QMidiIn unopened;

        // What is sent is dropped, except what went out before the stall was noticed.
        server->suspend(true);
        expectWarning("JACK server does not answer");
        QVERIFY(isBounded([&] { sendMany(ports.out); }));
        server->suspend(false);
        QTRY_VERIFY(!ports.sink.received().empty());
        QTest::qWait(100);
        const std::size_t late = ports.sink.received().size();
        QVERIFY2(late < 500, qPrintable(QString::number(late)));

        // A pause of less than two seconds is no stall: the message waits for its end.
        server->suspend(true);
        QThread::msleep(550);
        std::thread endOfPause([this] {
            QThread::msleep(100);
            server->suspend(false);
        });
        ports.out.sendRawMessage(kMmcPlay);
        endOfPause.join();
        QTRY_COMPARE(ports.sink.received().size(), late + 1);
        QCOMPARE(ports.sink.received().back(), kMmcPlay);

        // Every way to ask something of it.
        server->suspend(true);
        QTest::qWait(100);                // The cycle under way ends.
        ports.source.send({0x80, 24, 0}); // Arrives when it runs again: at a port that was closed.
        QTest::qWait(500);
        expectWarning("JACK server does not answer");
        ports.out.sendRawMessage(kMmcStop);
        QVERIFY_EXCEPTION_THROWN(unopened.openVirtualPort("x"), RtMidiError);
        QVERIFY(isBounded([&] { ports.in.closePort(); }));
        QVERIFY(isBounded([&] { ports.out.closePort(); }));
        QVERIFY(!ports.in.isPortOpen() && !ports.out.isPortOpen());
        QVERIFY(isBounded([&] { unopened.dropBackEnd(); }));
        QVERIFY(isBounded([&] { QVERIFY(ports.in.getPorts().isEmpty()); }));
        QVERIFY_EXCEPTION_THROWN(openByName(ports.out, PeerSink::port()), RtMidiError);
        QVERIFY_EXCEPTION_THROWN(ports.in.openVirtualPort("x"), RtMidiError);

        // It runs again: all is as before, and nothing was sent meanwhile.
        server->suspend(false);
        QTRY_VERIFY(ports.in.getPorts().contains(PeerSource::port()));
        QCoreApplication::processEvents();
        QCOMPARE(ports.received, 0);
        ports.open();
        ports.out.sendRawMessage(kMmcStop);
        ports.source.send({0x80, 24, 0});
        QTRY_COMPARE(ports.received, 1);
        QTRY_COMPARE(ports.sink.received().size(), late + 2);
    }
};

VELT_TEST_MAIN(TestMidiServerDeath)
#include "tst_midiserverdeath.moc"
