// SPDX-License-Identifier: MIT
// A long random show: foot switch, keyboard, mouse and end-of-song notes drive the real window over
// real MIDI, and after every step it must look, and the DAW must have received, exactly
// what the set list says. VELT_SOAK_LOCATES is how many songs are located, 24 unless it says more.
#include "dawmodes.h"
#include "midipeer.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "recordingplatform.h"
#include "run.h"
#include "servers.h"
#include "testcase.h"
#include "windowdriver.h"

#include <QDir>
#include <QRandomGenerator>

#ifdef Q_OS_MACOS
#include <malloc/malloc.h>
#else
#include <malloc.h>
#endif

namespace {

using Byte = unsigned char;
constexpr Byte kDeviceId = 0x11;

// The model: what the window must show and send.
class Expected
{
public:
    Expected(int dawMode, std::vector<EditDataSet> setList)
        : mode(dawMode), entries(std::move(setList))
    {
    }

    void move(int rows) { selected = std::clamp(selected + rows, 0, int(entries.size()) - 1); }
    void locate()
    {
        run = run.begun();
        if (isSong(selected)) {
            send(selected);
        }
    }
    void endOfSong(bool isAutoStop)
    {
        if (run.operationOn && isAutoStop) {
            press(false);
        } else if (run.operationOn && run.nextPos != -1) {
            send(run.nextPos);
        }
    }
    void press(bool isPlay)
    {
        mmc.push_back({0xF0, 0x7F, kDeviceId, 6, Byte(isPlay ? 2 : 1), 0xF7});
    }
    bool isSong(int row) const { return entries[std::size_t(row)].SetType == kSetTypeSong; }
    QStringList rowMarks() const
    {
        QStringList all;
        for (int row = 0; row < int(entries.size()); ++row) {
            static const char* const looks[] = {"plain", "sent", "next"};
            all << (isSong(row) ? looks[run.stateOf(row)] : "space");
        }
        return all;
    }

    static constexpr int kDaw = 1; // Its place among the running applications.
    Recording::Events keys;        // Of the step at hand.
    std::vector<Bytes> mmc;        // Of the whole show.
    int locates = 0;
    int selected = 0;
    Run run;

private:
    void send(int row)
    {
        press(false);
        if (mode == kModeProToolsBars) {
            keys += Recording::pause(100000);
        }
        for (const KeyStroke& stroke : locateKeys(dawMode(mode), entries[std::size_t(row)].Song)) {
            const int digit = stroke.key - '0';
            const int code = stroke.isVirtualKey ? stroke.key : 0x52 + digit + digit / 8;
            keys += Recording::press(kDaw, code, stroke.isCmd ? Recording::kCommand : 0);
        }
        ++locates;
        run = run.located(row, entries);
    }

    int mode;
    std::vector<EditDataSet> entries;
};

// What the process has allocated.
qint64 heapKb()
{
#ifdef Q_OS_MACOS
    malloc_statistics_t heap{};
    malloc_zone_statistics(nullptr, &heap);
    return qint64(heap.size_in_use) / 1024;
#else
    return qint64(mallinfo2().uordblks) / 1024;
#endif
}

int openHandles()
{
    return int(QDir("/dev/fd").entryList(QDir::Files | QDir::System).size());
}

} // namespace

class Soak : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        midi = std::make_unique<MidiSystem>();
        SKIP_WITHOUT(*midi);
    }

    void longShow()
    {
        constexpr int kModes = 4;
        constexpr int kLongRounds = 5;    // The first ones warm everything up.
        constexpr int kLongLocates = 500; // Enough to tell a leak from noise.
        const int locates = std::max(24, qEnvironmentVariableIntValue("VELT_SOAK_LOCATES"));
        const int rounds = locates >= kLongLocates ? kLongRounds : 1;
        [[maybe_unused]] qint64 heap = 0;
        int handles = 0;
        for (int round = 0; round < rounds; ++round) {
            for (int mode = 0; mode < kModes; ++mode) {
                playShow(mode, locates / (kModes * rounds));
                if (QTest::currentTestFailed()) {
                    return;
                }
            }
            source.reset(); // Their memory is not the window's.
            sink.reset();
            Recording::reset();
            qInfo("round %d: %lld kB of the heap, %d handles", round + 1, heapKb(), openHandles());
            if (round == 1) {
                heap = heapKb();
                handles = openHandles();
            }
        }
        if (rounds == 1) {
            return;
        }
        QCOMPARE(openHandles(), handles);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // These keep freed memory.
        // A leak must show between the 1 kB that a locate is seen to take and the 30 kB that stay
        // of each window that was opened and closed.
        const double grown = double(heapKb() - heap) / (rounds - 2);
        const double allowed = kModes * 40 + 1.5 * locates / rounds;
        QVERIFY2(grown < allowed, qPrintable(QString("%1 kB a round").arg(grown)));
#endif
    }

private:
    EditData randomShow(int mode)
    {
        EditData data;
        data.Mode = mode;
        data.DeviceIdValue = kDeviceId;
        data.MidiInPort = data.ShortcutMidiInPort = PeerSource::port();
        data.MidiOutPort = PeerSink::port();
        data.ShowList.resize(1);
        data.ShowList[0].ShowTitle = "Tonight";
        const int songs = random.bounded(8, 40);
        for (int i = 1; i <= songs; ++i) {
            const EditDataSong song{i,
                                    QString("Song %1").arg(i),
                                    {},
                                    random.bounded(1, 1000),
                                    random.bounded(1, 10000)};
            data.SongList.push_back(song);
            data.ShowList[0].SetList.push_back({kSetTypeSong, song, {}, {}});
            if (random.bounded(5) == 0) {
                data.ShowList[0].SetList.push_back({kSetTypeSpace, {}, "talk", {}});
            }
        }
        return data;
    }

    void playShow(int mode, int locates)
    {
        Recording::reset();
        Recording::setApplications({{"Finder"}, {mode < 2 ? "Pro Tools" : "Studio One"}});
        source.reset(); // Before another takes its name.
        sink.reset();
        source = std::make_unique<PeerSource>();
        sink = std::make_unique<PeerSink>();
        const EditData data = randomShow(mode);
        WindowDriver velt(data);
        for (QMidiIn* port : {velt.dawIn, velt.controllerIn}) {
            QVERIFY(port->isPortOpen());
            connect(port, &QMidiIn::midiMessageReceived, this, [this] { ++receivedNotes; });
        }
        settle();
        Expected expected(mode, data.ShowList[0].SetList);
        while (expected.locates < locates && !QTest::currentTestFailed()) {
            step(velt, expected);
        }
    }

    // One thing that somebody does, and what must be true after it.
    void step(WindowDriver& velt, Expected& expected)
    {
        const auto finishClick = [&velt](const char* name) {
            QTRY_VERIFY(!velt.button(name)->isDown());
        };
        const int action = random.bounded(16);
        if (action < 2) { // LOCATE by foot switch
            expected.locate();
            note(true, 31);
            finishClick("LOCATE");
        } else if (action < 3) { // by mouse
            expected.locate();
            velt.press("LOCATE");
        } else if (action < 7) { // AutoLocate and AutoStop
            velt.mode->setCurrentIndex(1 + random.bounded(2));
            expected.endOfSong(velt.mode->currentText() == "AutoStop");
            note(false, random.bounded(2) ? 24 : 36);
            finishClick("DAW STOP");
        } else if (action < 11) { // Song DOWN and UP
            move(velt, expected, action < 10 ? 1 : -1);
        } else if (action < 13) { // DAW PLAY and DAW STOP
            const bool isPlay = action == 11;
            expected.press(isPlay);
            note(true, isPlay ? 33 : 35);
            finishClick(isPlay ? "DAW PLAY" : "DAW STOP");
        } else if (action < 14) { // a key of the keyboard that is sent on
            expected.keys += Recording::press(Expected::kDaw, 0x52);
            QTest::keyClick(velt.table, Qt::Key_0);
            finishClick("Key 0");
        } else if (action < 15) { // back to the top
            expected.move(-1000);
            velt.select(0);
        } else if (expected.run.operationOn) {
            expected.run = expected.run.ended();
            velt.press("Reset");
        }
        QCOMPARE(Recording::takeEvents(), expected.keys);
        expected.keys.clear();
        QTRY_COMPARE(sink->received().size(), expected.mmc.size());
        QVERIFY(sink->received() == expected.mmc);
        QCOMPARE(velt.rowMarks(), expected.rowMarks());
        QCOMPARE(velt.selectedRow(), expected.selected);
        QCOMPARE(velt.isRunning(), expected.run.operationOn);
    }

    void move(WindowDriver& velt, Expected& expected, int rows)
    {
        expected.move(rows);
        if (random.bounded(2)) {
            note(true, rows > 0 ? 29 : 28);
        } else {
            QTest::keyClick(velt.table, rows > 0 ? Qt::Key_Down : Qt::Key_Up);
        }
    }

    // Plays a note into both inputs and waits until the window has acted on it.
    void note(bool isOn, int pitch)
    {
        const Byte channel = Byte(random.bounded(16));
        source->send({Byte((isOn ? 0x90 : 0x80) | channel), Byte(pitch), Byte(100)});
        sentNotes += 2;
        QTRY_COMPARE(receivedNotes, sentNotes);
        QCoreApplication::processEvents(); // A click that the note began shows itself.
    }

    QRandomGenerator random{20};
    std::unique_ptr<MidiSystem> midi;
    std::unique_ptr<PeerSource> source;
    std::unique_ptr<PeerSink> sink;
    int sentNotes = 0;
    int receivedNotes = 0;
};

VELT_TEST_MAIN(Soak)
#include "soak.moc"
