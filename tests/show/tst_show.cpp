// SPDX-License-Identifier: MIT
#include "modalscript.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "showdesk.h"
#include "testcase.h"

#include <QHeaderView>
#include <QScreen>

namespace {

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

// A show with real keys over X11 and real MIDI over JACK, against the stand-in DAW.
class TestShow : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void everyMode_data();
    void everyMode();
    void typingWhileTheShowGoesOn_data();
    void typingWhileTheShowGoesOn();
    void rowsAndButtonsHaveTheirColors();
    void dawThatReadsNothing();
    void midiServerAndDawDieAndComeBack();

private:
    std::unique_ptr<JackServer> jack;
    // One for all: the toolkit warns if it asks about one that has just ended.
    std::unique_ptr<WindowManager> windowManager;
};

void TestShow::initTestCase()
{
    jack = std::make_unique<JackServer>();
    windowManager = std::make_unique<WindowManager>();
    if (!jack->isRunning() || !windowManager->isRunning()) {
        QSKIP(qPrintable(jack->why() + windowManager->why()));
    }
}

void TestShow::everyMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("located");
    QTest::newRow("Pro Tools, bars") << int(kModeProToolsBars) << "bar 105";
    QTest::newRow("Pro Tools, markers") << int(kModeProToolsMarker) << "marker 7";
    QTest::newRow("Studio One, bars") << int(kModeStudioOneBars) << "bar 105";
    QTest::newRow("Studio One, markers") << int(kModeStudioOneMarker) << "marker 7";
}

void TestShow::everyMode()
{
    QFETCH(int, mode);
    QFETCH(QString, located);
    ShowDesk desk(showData(mode));
    desk.velt.select(2);
    QLineEdit elsewhere;
    elsewhere.setGeometry(700, 20, 200, 60);
    elsewhere.show();
    elsewhere.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&elsewhere));

    desk.daw->press("note 31"); // The foot switch, so that the focus stays elsewhere.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located " + located), 1, ShowDesk::kPatienceMs);
    QCOMPARE(desk.daw->texts("wrong"), QStringList());
    QTRY_COMPARE(desk.daw->texts("midi"), QStringList{ShowDesk::kMmcStop});
    QVERIFY(elsewhere.isActiveWindow());
    QCOMPARE(elsewhere.text(), QString());
}

void TestShow::typingWhileTheShowGoesOn_data()
{
    QTest::addColumn<int>("mode");
    QTest::newRow("Pro Tools") << int(kModeProToolsBars);
    QTest::newRow("Studio One") << int(kModeStudioOneBars);
}

void TestShow::typingWhileTheShowGoesOn()
{
    QFETCH(int, mode);
    ShowDesk desk(showData(mode));
    desk.velt.mode->setCurrentText("AutoStop");
    desk.locate(0);
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 12"), 1, ShowDesk::kPatienceMs);
    desk.daw->forget();
    const QTableWidgetItem* cue = desk.velt.table->item(2, 1);
    Desktop::click(desk.velt.table->viewport(), desk.velt.table->visualItemRect(cue).center(), 2);
    Desktop::xdotool({"type", "wait for "});
    desk.daw->press("end 24"); // AutoStop
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count(ShowDesk::kMmcStop), 1, ShowDesk::kPatienceMs);
    Desktop::xdotool({"type", "Mara 0"});
    desk.daw->press("note 29"); // Song DOWN
    QTRY_COMPARE(desk.velt.selectedRow(), 3);
    Desktop::xdotool({"type", " go"});
    Desktop::key("ctrl+space ctrl+0 KP_Enter");
    QTRY_COMPARE(desk.velt.table->item(2, 1)->text(), QString("wait for Mara 0 go"));
    Desktop::key("0"); // What has reached the DAW before this key has come by now.
    QTRY_COMPARE(desk.daw->texts("key"), (QStringList{"key down 0x52", "key up 0x52"}));
}

void TestShow::rowsAndButtonsHaveTheirColors()
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

void TestShow::dawThatReadsNothing()
{
    ShowDesk desk(sampleData()); // Without MIDI: its server would wait for the DAW.
    desk.locate(0);
    desk.daw->suspend(true);
    desk.locate(2); // A LOCATE that waited for the DAW would never return.
    desk.daw->suspend(false);
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 105"), 1, ShowDesk::kPatienceMs);
}

void TestShow::midiServerAndDawDieAndComeBack()
{
    ShowDesk desk;
    desk.locate(0);
    jack->kill();
    expectWarning("JACK server does not answer");
    desk.locate(0); // Keys need no MIDI.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 12"), 2, ShowDesk::kPatienceMs);
    desk.velt.press("DAW STOP");
    {
        ModalScript script;
        const QString text = "Midi%1Jack::openVirtualPort: JACK error creating virtual port";
        for (const auto& [title, direction] : {std::pair{"Midi In Open Error", "In"},
                                               {"Shortcut Midi In Open Error", "In"},
                                               {"Midi Out Open Error", "Out"}}) {
            script.answer({QMessageBox::Critical, title, text.arg(direction), QMessageBox::Ok},
                          QMessageBox::Ok);
        }
        desk.velt.window.midiReconnect();
    }
    desk.daw.reset();
    QVERIFY2(jack->restart(), qPrintable(jack->why()));
    desk.daw = std::make_unique<StandIn>();
    desk.confirmPreferences();
    desk.playOn();

    desk.daw->kill();
    desk.locate(2); // Typed into nothing; the run goes on.
    QCOMPARE(desk.velt.rowMarks(), (QStringList{"plain", "space", "sent", "next"}));
    desk.velt.window.midiReconnect(); // Absent ports of a live server are no error.
    QVERIFY(!desk.velt.dawIn->isPortOpen());
    desk.daw = std::make_unique<StandIn>();
    desk.confirmPreferences();
    desk.playOn();
}

VELT_DISPLAY_TEST_MAIN(TestShow)
#include "tst_show.moc"
