// SPDX-License-Identifier: MIT
#include "modalscript.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "showdesk.h"
#include "testcase.h"

#include <QHeaderView>
#include <QScreen>

namespace {

QStringList presses(const QStringList& keys)
{
    QStringList events;
    for (const QString& key : keys) {
        events << "key down " + key << "key up " + key;
    }
    return events;
}

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
    void footSwitchThroughTheShow();
    void keyboard();
    void typingWhileTheShowGoesOn_data();
    void typingWhileTheShowGoesOn();
    void frameTellsWhoHasTheKeyboard();
    void rowsAndButtonsHaveTheirColors();
    void dawDiesAndComesBack();
    void dawThatReadsNothing();
    void midiServerDiesAndComesBack();

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
    QTest::addColumn<int>("row"); // Of the sample show: bars 12, 105, 33; markers 1, 7, 10.
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QString>("located");
    QTest::newRow("Pro Tools, bars")
        << 0 << 2 << QStringList{"0x51", "0x53", "0x52", "0x57", "0x4C"} << "bar 105";
    QTest::newRow("Pro Tools, markers")
        << 1 << 2 << QStringList{"0x41", "0x59", "0x41"} << "marker 7";
    QTest::newRow("Studio One, bars")
        << 2 << 3 << QStringList{"0x11 cmd", "0x55", "0x55", "0x24"} << "bar 33";
    QTest::newRow("Studio One, markers")
        << 3 << 3 << QStringList{"0x29 cmd", "0x53", "0x52", "0x4C"} << "marker 10";
}

void TestShow::everyMode()
{
    QFETCH(int, mode);
    QFETCH(int, row);
    QFETCH(QStringList, keys);
    QFETCH(QString, located);
    ShowDesk desk(showData(mode));
    desk.velt.select(row);
    QLineEdit elsewhere;
    elsewhere.setGeometry(700, 20, 200, 60);
    elsewhere.show();
    elsewhere.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&elsewhere));

    desk.daw->press("note 31"); // The foot switch, so that the focus stays elsewhere.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located " + located), 1, ShowDesk::kPatienceMs);
    QTRY_COMPARE(desk.daw->texts({"key", "wrong"}), presses(keys));
    QTRY_COMPARE(desk.daw->texts({"midi"}), QStringList{ShowDesk::kMmcStop});
    QVERIFY(elsewhere.isActiveWindow());
    QCOMPARE(elsewhere.text(), QString());
}

void TestShow::footSwitchThroughTheShow()
{
    ShowDesk desk;
    for (int i = 0; i < 3; ++i) {
        desk.confirmPreferences(); // Adds no second connection.
    }
    desk.daw->press("note 31"); // LOCATE
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 12"), 1, ShowDesk::kPatienceMs);
    desk.daw->press("note 33"); // DAW PLAY
    QTRY_COMPARE(desk.daw->count(ShowDesk::kMmcPlay), 1);
    desk.daw->press("note 29\nnote 29"); // Song DOWN, over the space
    QTRY_COMPARE(desk.velt.selectedRow(), 2);
    desk.daw->press("note 28"); // Song UP
    QTRY_COMPARE(desk.velt.selectedRow(), 1);
    desk.daw->press("end 36"); // Located without the operator.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 105"), 1, ShowDesk::kPatienceMs);
    QTRY_COMPARE(desk.velt.rowMarks(), (QStringList{"plain", "space", "sent", "next"}));
    desk.daw->press("note 35"); // DAW STOP
    QTRY_COMPARE(desk.daw->count(ShowDesk::kMmcStop), 3);
    QCOMPARE(desk.velt.selectedRow(), 1);
    desk.daw->press("end 24");
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 33"), 1, ShowDesk::kPatienceMs);
    QTRY_VERIFY(!desk.velt.isRunning());
    QCOMPARE(desk.daw->count(ShowDesk::kMmcPlay), 1);
}

void TestShow::keyboard()
{
    ShowDesk desk;
    const auto cell = [&desk](int row, int column) {
        return desk.velt.table->visualItemRect(desk.velt.table->item(row, column)).center();
    };
    for (const auto& [key, code] : {std::pair{"space", "0x31"}, {"0", "0x52"}, {"Tab", "0x30"}}) {
        Desktop::key(key);
        QTRY_COMPARE(desk.daw->count(QString("key up ") + code), 1);
    }
    Desktop::key("Return KP_Enter Left Right l Down");
    QTRY_COMPARE(desk.velt.selectedRow(), 1);
    Desktop::click(desk.velt.table->viewport(), cell(2, 1)); // A cue is typed,
    Desktop::xdotool({"type", "0 in 0"});
    Desktop::key("Return");
    QTRY_COMPARE(desk.velt.table->item(2, 1)->text(), QString("0 in 0"));
    Desktop::click(desk.velt.table->viewport(), cell(3, 0), 2); // and a double click locates.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw->count("located bar 33"), 1, ShowDesk::kPatienceMs);
    QCOMPARE(desk.daw->texts({"key"}).filter("key up").size(), 3 + 4);
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
    QTRY_COMPARE(desk.daw->texts({"key"}), presses({"0x52"}));
}

void TestShow::frameTellsWhoHasTheKeyboard()
{
    ShowDesk desk;
    const auto color = [&desk] {
        const QPoint edge = desk.velt.frame->mapToGlobal({desk.velt.frame->width() / 2, 2});
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().pixelColor(edge).name();
    };
    const QString amber = "#ffcc00";
    const QString grey = "#4b4b4b";
    QTRY_COMPARE(color(), amber);
    for (const char* name : {"Edit", "Pref."}) {
        ModalScript script;
        script.expect([&](QWidget* dialog) {
            dialog->move(600, 100);
            QTRY_COMPARE(color(), grey);
            Desktop::key("Escape");
        });
        Desktop::click(desk.velt.button(name));
        QTRY_VERIFY(script.isDone());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QTRY_COMPARE(color(), amber);
        QVERIFY(desk.velt.isFocusOnTable());
    }
    const StandIn other("Studio One"); // A window that comes takes the keyboard.
    QTRY_COMPARE(color(), grey);
    Desktop::click(desk.velt.table);
    QTRY_COMPARE(color(), amber);
}

void TestShow::rowsAndButtonsHaveTheirColors()
{
    ShowDesk desk;
    const WindowDriver& velt = desk.velt;
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
}

void TestShow::dawDiesAndComesBack()
{
    ShowDesk desk;
    desk.locate(0);
    QTRY_COMPARE(desk.daw->count("located bar 12"), 1);
    desk.daw->kill();
    desk.locate(2); // Typed into nothing; the run goes on.
    QCOMPARE(desk.velt.rowMarks(), (QStringList{"plain", "space", "sent", "next"}));
    desk.daw = std::make_unique<StandIn>();
    desk.confirmPreferences();
    desk.playOn();
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

void TestShow::midiServerDiesAndComesBack()
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
        for (const auto& [title, text] :
             {std::pair{"Midi In Open Error",
                        "MidiInJack::openVirtualPort: JACK error creating virtual port"},
              {"Shortcut Midi In Open Error",
               "MidiInJack::openVirtualPort: JACK error creating virtual port"},
              {"Midi Out Open Error",
               "MidiOutJack::openVirtualPort: JACK error creating virtual port"}}) {
            script.answer({QMessageBox::Critical, title, text, QMessageBox::Ok}, QMessageBox::Ok);
        }
        desk.velt.window.midiReconnect();
    }
    desk.daw.reset();
    QVERIFY2(jack->restart(), qPrintable(jack->why()));
    desk.daw = std::make_unique<StandIn>();
    desk.confirmPreferences();
    desk.playOn();

    desk.daw.reset(); // An absent port of a live server is no error.
    desk.velt.window.midiReconnect();
    QVERIFY(!desk.velt.dawIn->isPortOpen());
}

VELT_DISPLAY_TEST_MAIN(TestShow)
#include "tst_show.moc"
