// SPDX-License-Identifier: MIT
#include "desktop.h"
#include "qmidiin.h"
#include "standin.h"
#include "testcase.h"
#include "windowdriver.h"

#include <QHeaderView>
#include <QScreen>

namespace {

// The sample show with the stand-in DAW's ports.
EditData showData(int mode = kModeProToolsBars)
{
    EditData data = sampleData();
    data.Mode = mode;
    data.MidiInPort = StandIn::kNotesPort;
    data.ShortcutMidiInPort = StandIn::kFootSwitchPort;
    data.MidiOutPort = StandIn::kMmcPort;
    data.DeviceIdValue = 0x7F;
    return data;
}

// A DAW and VELT side by side, driven by real keys and a real mouse. Needs a display with a window
// manager and, for MIDI, a MidiSystem.
struct ShowDesk
{
    explicit ShowDesk(const EditData& data = showData())
        : daw(data.Mode < kModeStudioOneBars ? "Pro Tools" : "Studio One"), velt(data)
    {
        velt.window.setGeometry(20, 40, 500, 600);
        velt.window.activateWindow();
        awaitMidi();
    }

    // A connection that was just made may lose its first notes: plays one that does nothing.
    void awaitMidi()
    {
        if (!velt.controllerIn->isPortOpen()) {
            return;
        }
        int received = 0;
        const auto counting = QObject::connect(velt.controllerIn, &QMidiIn::midiMessageReceived,
                                               &velt.window, [&received] { ++received; });
        QTRY_VERIFY_WITH_TIMEOUT((daw.press("note 127"), received > 0), kPatienceMs);
        QObject::disconnect(counting);
        daw.forget();
    }
    void locate(int row)
    {
        velt.select(row);
        velt.press("LOCATE");
    }

    static inline const QString kMmcStop = "midi F0 7F 7F 06 01 F7";
    static constexpr int kPatienceMs = 20000; // For a busy machine.

    StandIn daw; // Its window is there before the operator's.
    WindowDriver velt;
};

// How many pixels of the area have the colour on the screen.
int pixels(const QWidget* in, const QRect& area, const char* color)
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage();
    const QRect onScreen(in->mapToGlobal(area.topLeft()), area.size());
    int found = 0;
    for (int y = onScreen.top(); y <= onScreen.bottom(); ++y) {
        for (int x = onScreen.left(); x <= onScreen.right(); ++x) {
            found += screen.pixelColor(x, y) == QColor(color) ? 1 : 0;
        }
    }
    return found;
}

} // namespace

// A show with real keys over X11 and real MIDI, against the stand-in DAW.
class TestShow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        midi = std::make_unique<MidiSystem>();
        windowManager = std::make_unique<WindowManager>();
        SKIP_WITHOUT(*midi);
        SKIP_WITHOUT(*windowManager);
    }

    void typingWhileTheShowGoesOn_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QString>("located");
        QTest::newRow("Pro Tools, bars") << int(kModeProToolsBars) << "bar 12";
        QTest::newRow("Pro Tools, markers") << int(kModeProToolsMarker) << "marker 1";
        QTest::newRow("Studio One, bars") << int(kModeStudioOneBars) << "bar 12";
        QTest::newRow("Studio One, markers") << int(kModeStudioOneMarker) << "marker 1";
    }

    void typingWhileTheShowGoesOn()
    {
        QFETCH(int, mode);
        QFETCH(QString, located);
        ShowDesk desk(showData(mode));
        desk.velt.mode->setCurrentText("AutoStop");
        desk.daw.press("note 31"); // LOCATE
        QTRY_COMPARE_WITH_TIMEOUT(desk.daw.count("located " + located), 1, ShowDesk::kPatienceMs);
        QTRY_COMPARE(desk.daw.texts("midi"), QStringList{ShowDesk::kMmcStop});
        QCOMPARE(desk.daw.texts("wrong"), QStringList());
        desk.daw.forget();
        const QTableWidgetItem* cue = desk.velt.table->item(2, 1);
        Desktop::click(desk.velt.table->viewport(), desk.velt.table->visualItemRect(cue).center(),
                       2);
        Desktop::xdotool({"type", "wait for "});
        desk.daw.press("end 24"); // AutoStop
        QTRY_COMPARE_WITH_TIMEOUT(desk.daw.count(ShowDesk::kMmcStop), 1, ShowDesk::kPatienceMs);
        Desktop::xdotool({"type", "Mara 0"});
        desk.daw.press("note 29"); // Song DOWN
        QTRY_COMPARE(desk.velt.selectedRow(), 3);
        Desktop::xdotool({"type", " go"});
        Desktop::key("ctrl+space ctrl+0 KP_Enter");
        QTRY_COMPARE(desk.velt.table->item(2, 1)->text(), QString("wait for Mara 0 go"));
        Desktop::key("0"); // What has reached the DAW before this key has come by now.
        QTRY_COMPARE(desk.daw.texts("key"), (QStringList{"key down 0x52", "key up 0x52"}));
    }

    void rowsAndButtonsHaveTheirColors()
    {
        ShowDesk desk;
        const WindowDriver& velt = desk.velt;
        QTRY_VERIFY(pixels(velt.frame, velt.frame->rect(), "#ffcc00") > 1000);
        velt.press("LOCATE");
        velt.select(2);
        const auto count = [&velt](int row, const char* color) {
            const QRect cell = velt.table->visualItemRect(velt.table->item(row, 0));
            return pixels(velt.table->viewport(), cell, color);
        };
        QTRY_VERIFY(count(0, "#BB0000") > 5);   // Sent.
        QTRY_VERIFY(count(1, "#CDCDCD") > 500); // A space.
        QVERIFY(count(2, "#B4EFEF") > 500);     // Selected, and next.
        QVERIFY(count(2, "#0000BB") > 5);
        QCOMPARE(count(3, "#BB0000") + count(3, "#0000BB"), 0);
        QWidget* header = velt.table->horizontalHeader();
        QVERIFY(pixels(header, header->rect(), "#185466") > 1000);
        const QPushButton* locate = velt.button("LOCATE");
        QVERIFY(pixels(locate, locate->rect(), "#767471") > 200);
        velt.press("Reset");
        velt.shows->setCurrentIndex(1); // An empty show: nothing to locate.
        QTRY_VERIFY(pixels(locate, locate->rect(), "#b3b0ab") > 200);
        const StandIn other("Studio One"); // A window that comes takes the keyboard.
        QTRY_VERIFY(pixels(velt.frame, velt.frame->rect(), "#4b4b4b") > 1000);
    }

    void dawThatReadsNothing()
    {
        ShowDesk desk(sampleData()); // Without MIDI: its server would wait for the DAW.
        desk.locate(0);
        desk.daw.suspend(true);
        desk.locate(2); // A LOCATE that waited for the DAW would never return.
        desk.daw.suspend(false);
        QTRY_COMPARE_WITH_TIMEOUT(desk.daw.count("located bar 105"), 1, ShowDesk::kPatienceMs);
    }

private:
    std::unique_ptr<MidiSystem> midi;
    // One for all: Qt warns if it asks about one that has just ended.
    std::unique_ptr<WindowManager> windowManager;
};

VELT_DISPLAY_TEST_MAIN(TestShow)
#include "tst_show.moc"
