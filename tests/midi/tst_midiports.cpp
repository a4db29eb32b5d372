// SPDX-License-Identifier: MIT
#include "midipeer.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"

#include <QDeadlineTimer>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <iostream>
#include <sstream>
#include <thread>

namespace {

std::atomic<int> arrived{0}; // Counted on the library's thread.

// What a receiver reads of a message: status, channel, pitch, velocity, control, value.
using Fields = std::vector<std::uint32_t>;

Fields fieldsOf(const QMidiMessage* message)
{
    return {message->getStatus(),   message->getChannel(), message->getPitch(),
            message->getVelocity(), message->getControl(), message->getValue()};
}

// Note number `i` of a sequence of up to 16,000 that can be told apart.
Bytes numberedNote(int i)
{
    return {0x90, static_cast<unsigned char>(i % 128), static_cast<unsigned char>(1 + i / 128)};
}

// Calls `act` `times` times, `perTick` at once every `tickMs`, while the event loop runs, and
// never more than so many calls ahead of `answered`, if that is given.
constexpr int kMaxAhead = 1000;
bool paced(int times, int perTick, int tickMs, const std::function<void(int)>& act,
           const std::function<int()>& answered = {})
{
    int done = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        const int mayDo = answered ? answered() + kMaxAhead : times;
        for (int i = 0; i < perTick && done < std::min(times, mayDo); ++i) {
            act(done++);
        }
    });
    timer.start(tickMs);
    return QTest::qWaitFor([&] { return done == times; }, 30000);
}

} // namespace

Q_DECLARE_METATYPE(Bytes)

class TestMidiPorts : public TestCase
{
    Q_OBJECT

    std::unique_ptr<JackServer> server;
    std::unique_ptr<PeerSource> source;
    std::unique_ptr<PeerSink> sink;
    std::ostringstream output; // What the running test function writes on standard output.
    std::streambuf* screen = std::cout.rdbuf();

private slots:
    void initTestCase()
    {
        server = std::make_unique<JackServer>();
        if (!server->isRunning()) {
            QSKIP(qPrintable(server->why()));
        }
        source = std::make_unique<PeerSource>();
    }
    void init()
    {
        TestCase::init();
        sink.reset(); // A second one of its name would get another.
        sink = std::make_unique<PeerSink>();
        output.str({});
        std::cout.rdbuf(output.rdbuf());
    }
    void cleanup()
    {
        std::cout.rdbuf(screen);
        TestCase::cleanup();
    }

    void listsAndOpensByName()
    {
        QMidiIn in;
        QMidiOut out;
        QVERIFY_EXCEPTION_THROWN(in.openPort(UINT_MAX), RtMidiError);
        QVERIFY_EXCEPTION_THROWN(openByName(out, QStringLiteral("none")), RtMidiError);
        in.openPort(PeerSource::port().toUpper());
        QVERIFY(!in.isPortOpen() && !out.isPortOpen());
        in.openPort(PeerSource::port());
        openByName(out, PeerSink::port());
        QVERIFY(in.isPortOpen() && out.isPortOpen());
        in.closePort();
        out.closePort();
        QVERIFY(!in.isPortOpen() && !out.isPortOpen());
    }

    void decodes_data()
    {
        QTest::addColumn<Bytes>("bytes");
        QTest::addColumn<Fields>("fields");
        const auto row = [](const char* name, const Bytes& bytes, const Fields& fields) {
            QTest::newRow(name) << bytes << fields;
        };
        row("note on", {0x99, 0x24, 0x64}, {0x90, 10, 36, 100, 0, 0});
        row("note on, velocity 0", {0x90, 60, 0}, {0x90, 1, 60, 0, 0, 0});
        row("note off", {0x8F, 24, 64}, {0x80, 16, 24, 64, 0, 0});
        row("key pressure", {0xA0, 60, 7}, {0xA0, 1, 60, 0, 0, 7});
        row("control change", {0xB1, 7, 127}, {0xB0, 2, 0, 0, 7, 127});
        row("program change", {0xC2, 5}, {0xC0, 3, 0, 0, 0, 5});
        row("channel pressure", {0xD0, 9}, {0xD0, 1, 0, 0, 0, 9});
        row("pitch bend", {0xE0, 3, 0x40}, {0xE0, 1, 0, 0, 0, 8195});
        row("system exclusive", {0xF0, 1, 2, 0xF7}, {0xF0, 0, 0, 0, 0, 0});
        row("song position", {0xF2, 1, 2}, {0xF2, 0, 0, 0, 0, 0});
        row("clock", {0xF8}, {0xF8, 0, 0, 0, 0, 0});
        row("note on cut short", {0x91, 60}, {0x90, 2, 60, 0, 0, 0});
        row("status alone", {0xB0}, {0xB0, 1, 0, 0, 0, 0});
    }
    void decodes()
    {
        QFETCH(Bytes, bytes);
        QMidiIn in;
        in.setIgnoreTypes(false, false, false);
        in.dropBackEnd(); // The filter outlives it, as does the connection of the signal.
        Fields received;
        Bytes sysEx;
        connect(&in, &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* message) {
            sysEx = message->getSysExData();
            received = fieldsOf(message);
        });
        in.openPort(PeerSource::port());
        settle();
        source->send(bytes);
        QTRY_VERIFY(!received.empty());
        QTEST(received, "fields");
        QCOMPARE(sysEx, bytes.front() == 0xF0 ? bytes : Bytes());
    }

    void filtersByDefaultAndTracesTheRest()
    {
        QMidiIn in;
        std::vector<double> deltas;
        connect(&in, &QMidiIn::midiMessageReceived, this,
                [&](QMidiMessage* message) { deltas.push_back(message->getDeltaTime()); });
        in.openPort(PeerSource::port());
        settle();
        QTest::ignoreMessage(QtDebugMsg, "channel 9");
        QTest::ignoreMessage(QtDebugMsg, "channel -16");
        for (const Bytes& bytes : {Bytes{0x99, 36, 100}, {0xF0, 1, 0xF7}, {0xF8}, {0xFE}}) {
            source->send(bytes);
        }
        QTRY_COMPARE(deltas.size(), std::size_t(1));
        source->send({0x80, 36, 0});
        QTRY_COMPARE(deltas.size(), std::size_t(2));
        std::ostringstream expected;
        expected << "Byte 0 = 153, Byte 1 = 36, Byte 2 = 100, stamp = 0\n"
                 << "Byte 0 = 128, Byte 1 = 36, Byte 2 = 0, stamp = " << deltas[1] / 1000 << '\n';
        QCOMPARE(output.str(), expected.str());
        QVERIFY(deltas[1] > 0);
    }

    void deliversThousandsInOrderAndFreesThem()
    {
        constexpr int kNotes = 10000;
        QMidiIn in;
        int received = 0;
        int wrong = 0;
        std::atomic<int> freed{0};
        std::atomic<int> freedElsewhere{0};
        connect(&in, &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* message) {
            connect(message, &QObject::destroyed, [&] {
                ++freed;
                freedElsewhere += QThread::currentThread() == thread() ? 0 : 1;
            });
            const Bytes expected = numberedNote(received);
            // Every earlier message is gone by now, and this one is not.
            const bool right = message->thread() == thread() && freed == received &&
                               message->getPitch() == expected[1] &&
                               message->getVelocity() == expected[2];
            wrong += right ? 0 : 1;
            ++received;
        });
        in.openPort(PeerSource::port());
        settle();
        QVERIFY(paced(
            kNotes, 500, 6, [&](int i) { source->send(numberedNote(i)); },
            [&] { return received; }));
        QTRY_COMPARE(freed.load(), kNotes);
        QCOMPARE(received, kNotes);
        QCOMPARE(wrong + freedElsewhere, 0);
    }

    void deliversWhatWasQueuedWhenThePortGoes()
    {
        auto in = std::make_unique<QMidiIn>();
        int pitches = 0;
        int freed = 0;
        connect(
            in.get(), &QMidiIn::midiMessageReceived, this, [] { ++arrived; }, Qt::DirectConnection);
        connect(in.get(), &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* message) {
            connect(message, &QObject::destroyed, this, [&] { ++freed; });
            pitches += static_cast<int>(message->getPitch());
        });
        in->openPort(PeerSource::port());
        settle();
        for (int i = 0; i < 100; ++i) {
            source->send({0x90, 50, 100});
        }
        for (const QDeadlineTimer deadline(5000); arrived < 100 && !deadline.hasExpired();) {
            std::this_thread::yield(); // The event loop must not run yet.
        }
        QCOMPARE(arrived.load(), 100);
        in.reset();
        QTRY_COMPARE(freed, 100);
        QCOMPARE(pitches, 100 * 50);
    }

    void sendsWhatItIsGivenWhileOpenOnly()
    {
        const Bytes large(12000, 1); // More than the guard's budget, less than the library's ring.
        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        QMidiMessage mmc;
        mmc.setStatus(MIDI_SYSEX)->setSysExData(play);
        QMidiMessage unencoded;
        unencoded.setStatus(MIDI_PITCH_BEND)->setValue(1);

        QMidiOut out;
        out.sendNoteOn(1, 1, 1);
        openByName(out, PeerSink::port());
        out.sendNoteOn(1, 60, 127);
        out.sendNoteOff(16, 60, 0);
        out.sendRawMessage({});
        out.sendMessage(&unencoded);
        QTest::ignoreMessage(QtDebugMsg, "send message 240");
        out.sendMessage(&mmc);
        out.sendRawMessage(large);
        QTRY_COMPARE(sink->received().size(), std::size_t(4));
        out.closePort();
        out.sendNoteOn(1, 2, 2);
        openByName(out, PeerSink::port());
        out.sendNoteOn(1, 3, 3);
        const std::vector<Bytes> all{{0x90, 60, 127}, {0x8F, 60, 0}, play, large, {0x90, 3, 3}};
        QTRY_COMPARE(sink->received().size(), all.size());
        QCOMPARE(sink->received(), all);
    }

    void losesNothingThroughTheGuard()
    {
        std::vector<Bytes> sent;
        QMidiOut out;
        openByName(out, PeerSink::port());
        const auto sendNext = [&](int i) {
            sent.push_back(numberedNote(i));
            out.sendRawMessage(sent.back());
        };
        QVERIFY(paced(5000, 500, 6, sendNext));  // Fills the guard's budget again and again.
        QVERIFY(paced(5000, 100, 30, sendNext)); // Outlasts its proofs.
        QTRY_COMPARE(sink->received().size(), sent.size());
        QCOMPARE(sink->received(), sent);
    }

    void virtualPortsWork()
    {
        QMidiIn in;
        QMidiIn virtualIn;
        QMidiOut out;
        QMidiOut virtualOut;
        Fields received;
        for (QMidiIn* port : {&in, &virtualIn}) {
            connect(port, &QMidiIn::midiMessageReceived, this,
                    [&](QMidiMessage* message) { received = fieldsOf(message); });
        }
        const QString name = QString::fromUtf8("B\xC3\xBChne");
        virtualOut.openVirtualPort(name);
        in.openPort(in.getPorts().filter(name).value(0));
        virtualIn.openVirtualPort(name);
        openByName(out, out.getPorts().filter(name).value(0));
        settle();
        virtualOut.sendNoteOn(2, 30, 40);
        QTRY_COMPARE(received, Fields({0x90, 2, 30, 40, 0, 0}));
        out.sendNoteOff(3, 31, 41);
        QTRY_COMPARE(received, Fields({0x80, 3, 31, 41, 0, 0}));
    }
};

VELT_TEST_MAIN(TestMidiPorts)
#include "tst_midiports.moc"
