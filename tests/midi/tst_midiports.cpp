// SPDX-License-Identifier: MIT
#include "blockedoutput.h"
#include "midipeer.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"
#include "writeatonce.h"

#include <QDeadlineTimer>
#include <QThread>

#include <atomic>

namespace {

// Status, channel, pitch, velocity, control, value, and the bytes of system exclusive data.
using Fields = std::vector<std::uint32_t>;

// Notes at once: fewer than the 200 that an ALSA client keeps.
constexpr int kBurst = 100;

// Note number `i` of a sequence of up to 16,000 that can be told apart.
Bytes numberedNote(int i)
{
    return {0x90, static_cast<unsigned char>(i % 128), static_cast<unsigned char>(1 + i / 128)};
}

// Traces of received messages, written on RtMidi's thread.
constexpr int kPatienceMs = 20000;
std::atomic<int> traces = 0;
void countTrace(QtMsgType, const QMessageLogContext&, const QString&)
{
    ++traces;
}

} // namespace

class TestMidiPorts : public TestCase
{
    Q_OBJECT

    std::unique_ptr<MidiSystem> midi;

private slots:
    void initTestCase()
    {
        midi = std::make_unique<MidiSystem>();
        SKIP_WITHOUT(*midi);
    }

    void decodes()
    {
        PeerSource source;
        QMidiIn in;
        in.setIgnoreTypes(false, false, false);
        in.dropBackEnd(); // The filter and the signal's connection stay.
        Fields received;
        connect(&in, &QMidiIn::midiMessageReceived, this, [&](const QMidiMessage* message) {
            received = {message->getStatus(),   message->getChannel(), message->getPitch(),
                        message->getVelocity(), message->getControl(), message->getValue()};
            for (const unsigned char byte : message->getSysExData()) {
                received.push_back(byte);
            }
        });
        QVERIFY_EXCEPTION_THROWN(in.openPort(unsigned(in.getPorts().size())), RtMidiError);
        in.openPort(PeerSource::port().toUpper());
        QVERIFY(!in.isPortOpen());
        in.openPort(PeerSource::port());
        QVERIFY(in.isPortOpen());
        settle();
        using Case = std::pair<Bytes, Fields>;
        std::vector<Case> cases{
            Case({0x99, 0x24, 0x64}, {0x90, 10, 36, 100, 0, 0}),
            Case({0x90, 60, 0}, {0x90, 1, 60, 0, 0, 0}), // Not turned into a note off.
            Case({0x8F, 24, 64}, {0x80, 16, 24, 64, 0, 0}),
            Case({0xA0, 60, 7}, {0xA0, 1, 60, 0, 0, 7}),
            Case({0xB1, 7, 127}, {0xB0, 2, 0, 0, 7, 127}),
            Case({0xC2, 5}, {0xC0, 3, 0, 0, 0, 5}),
            Case({0xD0, 9}, {0xD0, 1, 0, 0, 0, 9}),
            Case({0xE0, 3, 0x40}, {0xE0, 1, 0, 0, 0, 8195}),
            Case({0xF0, 1, 2, 0xF7}, {0xF0, 0, 0, 0, 0, 0, 0xF0, 1, 2, 0xF7}),
            Case({0xF2, 1, 2}, {0xF2, 0, 0, 0, 0, 0}),
            Case({0xF8}, {0xF8, 0, 0, 0, 0, 0})};
        if (midi->isJack()) { // The others send nothing that is cut short.
            cases.push_back({{0x91, 60}, {0x90, 2, 60, 0, 0, 0}});
        }
        for (const auto& [bytes, fields] : cases) {
            received.clear();
            source.send(bytes);
            QTRY_VERIFY(!received.empty());
            QCOMPARE(received, fields);
        }
    }

    void filtersByDefaultAndTracesTheRest()
    {
        // RtMidi names ports of CoreMIDI in ASCII only.
        const QString name = QString::fromUtf8(kIsCoreMidi ? "Stage" : "B\xC3\xBChne");
        QMidiOut source;
        source.openVirtualPort(name);
        QMidiIn in;
        double deltaMs = -1;
        connect(&in, &QMidiIn::midiMessageReceived, this,
                [&](QMidiMessage* message) { deltaMs = message->getDeltaTime(); });
        in.openPort(in.getPorts().filter(name).value(0));
        settle();
        QTest::ignoreMessage(QtDebugMsg, "channel 9");
        QTest::ignoreMessage(QtDebugMsg, "channel -16");
        auto output = std::make_unique<BlockedOutput>(BlockedOutput::EmptyPipe);
        for (const Bytes& bytes : {Bytes{0x99, 36, 100}, {0xF0, 1, 0xF7}, {0xF8}, {0xFE}}) {
            source.sendRawMessage(bytes);
        }
        const bool isFirst = QTest::qWaitFor([&] { return deltaMs == 0; });
        source.sendRawMessage({0x80, 36, 0});
        const bool isSecond = QTest::qWaitFor([&] { return deltaMs > 0; });
        QString traced;
        for (const QByteArray& line : output->read().split('\n')) {
            traced += line.startsWith("Byte ") ? line + '\n' : QByteArray();
        }
        output.reset();
        QVERIFY(isFirst);
        QVERIFY(isSecond);
        QCOMPARE(traced, QString("Byte 0 = 153, Byte 1 = 36, Byte 2 = 100, stamp = 0\n"
                                 "Byte 0 = 128, Byte 1 = 36, Byte 2 = 0, stamp = %1\n")
                             .arg(deltaMs / 1000));
    }

    void deliversAllInOrderAndFreesThem()
    {
        constexpr int kNotes = 20 * kBurst;
        PeerSource source;
        int freed = 0;
        int received = 0;
        int right = 0;
        auto in = std::make_unique<QMidiIn>();
        connect(in.get(), &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* message) {
            connect(message, &QObject::destroyed, this, [&freed] { ++freed; });
            const Bytes expected = numberedNote(received);
            // Every earlier message is freed, on this thread, and this one is not.
            right += message->thread() == thread() && QThread::currentThread() == thread() &&
                     freed == received && message->getPitch() == expected[1] &&
                     message->getVelocity() == expected[2];
            ++received;
        });
        qInstallMessageHandler(countTrace);
        const auto sendBurst = [&](int first) {
            traces = 0;
            for (int i = first; i < first + kBurst; ++i) {
                source.send(numberedNote(i));
            }
            for (const QDeadlineTimer end(kPatienceMs); traces < kBurst && !end.hasExpired();) {
                QThread::msleep(1); // Runs no event loop.
            }
        };
        in->openPort(PeerSource::port());
        settle();
        for (int sent = 0; sent < kNotes; sent += kBurst) {
            QTRY_COMPARE(received, sent);
            sendBurst(sent);
        }
        in->closePort(); // What waits for the event loop is delivered,
        QVERIFY(received < kNotes);
        QTRY_COMPARE(received, kNotes);
        QCOMPARE(right, kNotes);
        QCOMPARE(freed, kNotes);

        in->openPort(PeerSource::port());
        settle();
        sendBurst(0);
        in.reset(); // but not when the port is destroyed.
        QCoreApplication::processEvents();
        QCOMPARE(received, kNotes);
    }

    void goesOnWhileItsOutputIsBlocked_data()
    {
        QTest::addColumn<BlockedOutput::Kind>("kind");
        QTest::newRow("full pipe") << BlockedOutput::FullPipe;
        QTest::newRow("paused terminal") << BlockedOutput::PausedTerminal;
        QTest::newRow("terminal that is not read") << BlockedOutput::FullTerminal;
    }
    void goesOnWhileItsOutputIsBlocked()
    {
        constexpr int kNotes = kBurst;
        QFETCH(BlockedOutput::Kind, kind);
        ConnectedPorts ports;
        QMidiMessage note;
        note.setStatus(MIDI_NOTE_ON);
        const QtMessageHandler handler = qInstallMessageHandler(writeMessageAtOnce);
        auto blocked = std::make_unique<BlockedOutput>(kind);
        for (int i = 0; i < kNotes; ++i) {
            ports.source.send(numberedNote(i));
            ports.out.sendMessage(&note);
        }
        const bool allCame = QTest::qWaitFor(
            [&] { return ports.received == kNotes && ports.sink.received().size() == kNotes; });
        blocked->resume();
        ports.source.send({0x99, 36, 100});
        (void)QTest::qWaitFor([&] { return ports.received == kNotes + 1; });
        const QByteArray traced = blocked->read();
        const bool isNonBlocking = BlockedOutput::isNonBlocking();
        blocked.reset();
        qInstallMessageHandler(handler);
        QVERIFY(allCame);
        QVERIFY2(traced.contains("Byte 0 = 153, Byte 1 = 36, Byte 2 = 100, stamp = "), traced);
        QVERIFY(!isNonBlocking);
    }

    void sendsWhatItIsGivenWhileOpenOnly()
    {
        // More than JackLink's budget, less than RtMidi's ring buffer; ALSA's events are smaller.
        Bytes large(MidiSystem::isAlsa() ? 2000 : 12000, 1);
        large.front() = 0xF0;
        large.back() = 0xF7;
        const Bytes play{0xF0, 0x7F, 0x7F, 0x06, 0x02, 0xF7};
        QMidiMessage mmc;
        mmc.setStatus(MIDI_SYSEX)->setSysExData(play);
        QMidiMessage unencoded;

        PeerSink sink;
        QMidiOut out;
        QVERIFY_EXCEPTION_THROWN(openByName(out, "none"), RtMidiError);
        out.openVirtualPort("virtual");
        out.closePort();
        out.sendNoteOn(1, 1, 1);
        openByName(out, PeerSink::port());
        out.sendNoteOn(1, 60, 127);
        out.sendNoteOff(16, 60, 0);
        out.sendRawMessage({});
        out.sendMessage(&unencoded);
        QTest::ignoreMessage(QtDebugMsg, "send message 240");
        out.sendMessage(&mmc);
        out.sendRawMessage(large);
        QTRY_COMPARE(sink.received().size(), std::size_t(4));
        out.closePort();
        QVERIFY(!out.isPortOpen());
        out.sendNoteOn(1, 2, 2);
        openByName(out, PeerSink::port());
        std::vector<Bytes> all{{0x90, 60, 127}, {0x8F, 60, 0}, play, large};
        for (int i = 0; i < 5000; ++i) { // Uses the budget up several times.
            all.push_back(numberedNote(i));
            out.sendRawMessage(all.back());
            if (MidiSystem::isAlsa() && i % kBurst == 0) {
                QTRY_COMPARE(sink.received().size(), all.size());
            }
        }
        QTRY_COMPARE(sink.received().size(), all.size());
        QCOMPARE(sink.received(), all);
    }
};

VELT_TEST_MAIN(TestMidiPorts)
#include "tst_midiports.moc"
