// SPDX-License-Identifier: MIT
#include "modalscript.h"
#include "operatorfixture.h"
#include "qmidiin.h"
#include "qmidimessage.h"
#include "servers.h"
#include "standin.h"
#include "testcase.h"
#include "windowmanager.h"

#include <QElapsedTimer>
#include <QFile>
#include <QScreen>
#include <QThread>

namespace {

EditData liveData()
{
    EditData data = sampleData();
    data.MidiInPort = StandIn::kNotesPort;
    data.ShortcutMidiInPort = StandIn::kFootSwitchPort;
    data.MidiOutPort = StandIn::kMmcPort;
    data.DeviceIdValue = 0x7F;
    return data;
}

// A foot switch of the test's own, for more notes than a foot can play.
struct Pads : MidiOutput
{
    Pads() : MidiOutput("Pads", {}) { openVirtualPort("notes"); }

    void noteOn(int note, int velocity = 100)
    {
        send({0x90, static_cast<unsigned char>(note), static_cast<unsigned char>(velocity)});
    }

    static QString name() { return "Pads:notes"; }
};

qint64 residentKb()
{
    QFile file("/proc/self/statm");
    file.open(QIODevice::ReadOnly);
    return file.readAll().split(' ').at(1).toLongLong() * 4;
}

void xdotool(const QStringList& arguments)
{
    QCOMPARE(QProcess::execute("xdotool", arguments), 0);
}

// The window on a desktop with a window manager, driven by real keys and a real mouse.
class Desk
{
public:
    explicit Desk(const EditData& data)
        : daw(data.Mode < 2 ? "Pro Tools" : "Studio One"), isDawReady(daw.isReady()), op(data)
    {
        op.window.setGeometry(20, 40, 500, 600);
        op.window.activateWindow();
    }

    bool isReady() { return isDawReady && QTest::qWaitForWindowActive(&op.window); }
    void click(const QWidget* widget) const { click(widget->mapToGlobal(widget->rect().center())); }
    void clickTitle(int row) const
    {
        const QRect cell = op.table->visualItemRect(op.table->item(row, 0));
        click(op.table->viewport()->mapToGlobal(cell.center()));
    }
    QString frameColor() const // As it stands on the screen.
    {
        const QPoint edge = op.frame->mapToGlobal(QPoint(op.frame->width() / 2, 2));
        return QGuiApplication::primaryScreen()->grabWindow(0).toImage().pixelColor(edge).name();
    }

    static inline const QString kAmber = "#ffcc00";
    static inline const QString kGrey = "#4b4b4b";

    WindowManager windowManager{true};
    StandIn daw;
    bool isDawReady; // Its window is there before the operator's.
    Operator op;

private:
    static void click(QPoint at)
    {
        xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "click", "1"});
    }
};

} // namespace

// A show run without the mouse: foot switch, end-of-song notes, keyboard; real MIDI, real keys.
class TestHandsFree : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void footSwitchThroughTheShow();
    void runModes();
    void manyNotes();
    void noteToButton();
    void reconnectingAddsNoConnection();
    void keys();
    void keysByMode_data();
    void keysByMode();
    void frameTellsWhoHasTheKeyboard();

private:
    std::unique_ptr<JackServer> jack;
};

void TestHandsFree::initTestCase()
{
    jack = std::make_unique<JackServer>();
    if (!jack->isRunning()) {
        QSKIP(qPrintable(jack->why()));
    }
}

void TestHandsFree::footSwitchThroughTheShow()
{
    StandIn daw("Pro Tools");
    QVERIFY(daw.isReady());
    const Operator op(liveData());

    daw.press("note 31"); // LOCATE
    QTRY_COMPARE_WITH_TIMEOUT(daw.count("located bar 12"), 1, 10000);
    daw.press("note 33"); // DAW PLAY
    QTRY_COMPARE(daw.count("midi F0 7F 7F 06 02 F7"), 1);
    daw.press("note 29"); // Song DOWN, over the space
    daw.press("note 29");
    QTRY_COMPARE(op.selectedRow(), 2);
    daw.press("note 28"); // Song UP, and down again
    daw.press("note 29");
    daw.press("note 35"); // DAW STOP
    QTRY_COMPARE(daw.count("midi F0 7F 7F 06 01 F7"), 2);
    daw.press("note 31");
    QTRY_COMPARE_WITH_TIMEOUT(daw.count("located bar 105"), 1, 10000);
    daw.press("note 29");
    daw.press("note 31");
    QTRY_COMPARE_WITH_TIMEOUT(daw.count("located bar 33"), 1, 10000);
    QTRY_VERIFY(!op.isRunning());
    QCOMPARE(op.looks(), (QStringList{"plain", "space", "plain", "sent"}));
}

void TestHandsFree::runModes()
{
    StandIn daw("Pro Tools");
    QVERIFY(daw.isReady());
    const Operator op(liveData());
    op.press("LOCATE");
    QTRY_COMPARE(daw.count("located bar 12"), 1);

    op.mode->setCurrentText("Manual");
    daw.press("end 24");
    QTRY_COMPARE(daw.count("sent note off 24 daw notes"), 1);
    op.mode->setCurrentText("AutoStop");
    daw.forget();
    daw.press("end 36");
    QTRY_COMPARE(daw.count("midi F0 7F 7F 06 01 F7"), 1);
    QVERIFY(op.isRunning());

    op.mode->setCurrentText("AutoLocate");
    op.select(0);
    daw.press("end 24");
    QTRY_COMPARE_WITH_TIMEOUT(daw.count("located bar 105"), 1, 10000);
    QTRY_COMPARE(op.looks(), (QStringList{"plain", "space", "sent", "next"}));
    QCOMPARE(op.selectedRow(), 0);
    daw.press("end 36");
    QTRY_COMPARE_WITH_TIMEOUT(daw.count("located bar 33"), 1, 10000);
    QTRY_VERIFY(!op.isRunning());
    QCOMPARE(op.selectedRow(), 0);
}

void TestHandsFree::manyNotes()
{
    Pads pads;
    EditData data = liveData();
    data.ShortcutMidiInPort = Pads::name();
    const Operator op(data);
    QVERIFY(op.controllerIn->isPortOpen());

    constexpr int kNotes = 10000;
    constexpr int kBurst = 50;
    int received = 0;
    bool inOrder = true;
    connect(op.controllerIn, &QMidiIn::midiMessageReceived, this, [&](QMidiMessage* message) {
        inOrder = inOrder && message->getPitch() == std::uint32_t(received % 128);
        ++received;
    });
    [[maybe_unused]] qint64 warm = 0;
    for (int sent = 0; sent < kNotes;) {
        for (const int end = sent + kBurst; sent < end; ++sent) {
            // Notes 28 and 29 move the selection in between; 31 to 35 would open a warning.
            const int note = sent % 128;
            pads.noteOn(note, note >= 31 && note <= 35 ? 0 : 100);
        }
        QTRY_COMPARE_WITH_TIMEOUT(received, sent, 10000);
        if (sent == kNotes / 5) {
            warm = residentKb();
        }
    }
    QVERIFY(inOrder);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // These keep what is freed.
    const qint64 grown = residentKb() - warm;
    QVERIFY2(grown < 1024, qPrintable(QString("grown by %1 kB").arg(grown)));
#endif
}

void TestHandsFree::noteToButton()
{
    StandIn daw("Pro Tools");
    QVERIFY(daw.isReady());
    Pads pads;
    EditData data = liveData();
    data.ShortcutMidiInPort = Pads::name();
    const Operator op(data);
    op.select(1); // A space: the button is all that moves.
    QElapsedTimer timer;
    QVector<double> ms;
    connect(op.button("LOCATE"), &QPushButton::pressed, this,
            [&] { ms << double(timer.nsecsElapsed()) / 1e6; });
    int clicks = 0; // An animated click ends by itself; the next begins afterwards.
    connect(op.button("LOCATE"), &QPushButton::clicked, this, [&clicks] { ++clicks; });
    for (int i = 1; i <= 21; ++i) {
        timer.start();
        pads.noteOn(31);
        QTRY_COMPARE(clicks, i);
    }
    QCOMPARE(ms.size(), 21);
    std::sort(ms.begin(), ms.end());
    qInfo("note on the wire to button: median %.2f ms, largest %.2f ms", ms[10], ms.last());
    QVERIFY(ms[10] <= 15);
}

void TestHandsFree::reconnectingAddsNoConnection()
{
    StandIn daw("Pro Tools");
    QVERIFY(daw.isReady());
    Operator op(liveData());
    for (int i = 0; i < 3; ++i) {
        op.window.midiReconnect();
    }
    daw.press("note 29");
    QTRY_COMPARE(daw.count("sent note off 29 foot switch"), 1);
    QTRY_COMPARE(op.selectedRow(), 1);
    op.press("DAW PLAY");
    QTRY_COMPARE(daw.count("midi F0 7F 7F 06 02 F7"), 1);
    daw.press("note 28"); // By when a second copy of either would have come.
    QTRY_COMPARE(op.selectedRow(), 0);
    QCOMPARE(daw.count("midi F0 7F 7F 06 02 F7"), 1);
}

void TestHandsFree::keys()
{
    Desk desk(liveData());
    QVERIFY(desk.isReady());
    xdotool({"key", "space"});
    QTRY_COMPARE(desk.daw.count("key up 0x31"), 1);
    xdotool({"key", "0"});
    QTRY_COMPARE(desk.daw.count("key up 0x52"), 1);
    xdotool({"key", "Tab"});
    QTRY_COMPARE(desk.daw.count("key up 0x30"), 1);
    xdotool({"key", "Return", "KP_Enter", "Left", "Right", "l"});
    xdotool({"key", "Down"});
    QTRY_COMPARE(desk.op.selectedRow(), 1);

    // In the "Cue" column keys edit, until a run is on.
    desk.op.select(2, 1);
    xdotool({"type", "0 in 0"});
    xdotool({"key", "Return"});
    QTRY_COMPARE(desk.op.table->item(2, 1)->text(), QString("0 in 0"));
    xdotool({"key", "Down"});
    QTRY_COMPARE(desk.op.selectedRow(), 3);
    desk.clickTitle(3);
    xdotool({"click", "--repeat", "2", "--delay", "50", "1"}); // A double click locates.
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw.count("located bar 33"), 1, 10000);
    desk.op.select(0);
    desk.op.press("LOCATE");
    QTRY_COMPARE_WITH_TIMEOUT(desk.daw.count("located bar 12"), 1, 10000);
    desk.op.select(2, 1);
    xdotool({"key", "0"});
    QTRY_COMPARE(desk.daw.count("key up 0x52"), 2);
    xdotool({"key", "Up"});
    QTRY_COMPARE(desk.op.selectedRow(), 1);
    QCOMPARE(desk.op.table->item(2, 1)->text(), QString("0 in 0"));
    QCOMPARE(desk.daw.texts({"key"}).filter("key up").size(), 4 + 4 + 4);
}

void TestHandsFree::keysByMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("areButtonsShown");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("Pro Tools, markers") << 1 << true << QStringList{"0x31", "0x52", "0x30"};
    QTest::newRow("Pro Tools, buttons hidden") << 0 << false << QStringList{"0x31", "0x52", "0x30"};
    QTest::newRow("Studio One, bars") << 2 << true << QStringList{"0x52", "0x4C"};
    QTest::newRow("Studio One, markers") << 3 << true << QStringList{"0x52", "0x4C"};
}

void TestHandsFree::keysByMode()
{
    QFETCH(int, mode);
    QFETCH(bool, areButtonsShown);
    QFETCH(QStringList, sent);
    EditData data = liveData();
    data.Mode = mode;
    data.ShowKeyButton = areButtonsShown;
    Desk desk(data);
    QVERIFY(desk.isReady());
    QCOMPARE(desk.op.button("LOCATE")->isVisible(), areButtonsShown);
    xdotool({"key", "space", "0", "Tab", "Return", "KP_Enter"});
    QTRY_COMPARE(desk.daw.texts({"key"}).filter("key up").size(), sent.size());
    for (const QString& key : sent) {
        QCOMPARE(desk.daw.count("key up " + key), 1);
    }
}

void TestHandsFree::frameTellsWhoHasTheKeyboard()
{
    Desk desk(liveData());
    QVERIFY(desk.isReady());
    QTRY_COMPARE(desk.frameColor(), Desk::kAmber);

    for (const auto& [button, title] : {std::pair{"Edit", "Edit"}, {"Pref.", "Preference"}}) {
        ModalScript script;
        script.expect([&, title = title](QWidget* dialog) {
            QCOMPARE(dialog->windowTitle(), QString(title));
            dialog->move(600, 100);
            QTRY_COMPARE(desk.frameColor(), Desk::kGrey);
            xdotool({"key", "Escape"});
        });
        desk.click(desk.op.button(button));
        QTRY_VERIFY(script.isDone());
        QTRY_VERIFY(!QApplication::activeModalWidget());
        QTRY_COMPARE(desk.frameColor(), Desk::kAmber);
        QVERIFY(desk.op.isFocusOnTable());
    }

    // A combo box with the focus takes no key; only the mouse changes it.
    for (QComboBox* combo : {desk.op.mode, desk.op.shows}) {
        const int index = combo->currentIndex();
        combo->setFocus(Qt::TabFocusReason);
        QTRY_COMPARE(desk.frameColor(), Desk::kAmber);
        xdotool({"key", "Down", "Up", "Up", "m", "a", "e"});
        xdotool({"key", "0"}); // The keys before have been handled when this one has.
        QTRY_COMPARE(desk.daw.count("key up 0x52"), 1);
        QCOMPARE(combo->currentIndex(), index);
        desk.daw.forget();
    }
    desk.op.button("Edit")->setFocus(Qt::TabFocusReason);
    QVERIFY(desk.op.isFocusOnTable());
    QTRY_COMPARE(desk.frameColor(), Desk::kAmber);

    QWidget other; // Another application takes the focus, and gives it back.
    other.setGeometry(700, 100, 200, 200);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QTRY_COMPARE(desk.frameColor(), Desk::kGrey);
    xdotool({"key", "space"});
    desk.clickTitle(3);
    QTRY_COMPARE(desk.frameColor(), Desk::kAmber);
    QTRY_COMPARE(desk.op.selectedRow(), 3);
    desk.op.window.showMinimized();
    QTRY_VERIFY(!desk.op.window.isActiveWindow());
    desk.op.window.showNormal();
    desk.op.window.activateWindow();
    QTRY_COMPARE(desk.frameColor(), Desk::kAmber);
    QCOMPARE(desk.daw.count("key up 0x31"), 0);
}

VELT_DISPLAY_TEST_MAIN(TestHandsFree)
#include "tst_handsfree.moc"
