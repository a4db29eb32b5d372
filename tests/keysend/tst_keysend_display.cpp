// SPDX-License-Identifier: MIT
// The key sender over real X servers, with and without a window manager.
#include "macevents.h"
#include "qkeyeventsend.h"
#include "receiver.h"
#include "servers.h"
#include "testcase.h"
#include "x11connection.h"
#include "x11windows.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <csignal>
#include <memory>
#include <xcb/xcb.h>

namespace {

const QString kDaw = QStringLiteral("Pro Tools");

void post(ProcessSerialNumber process, CGKeyCode key)
{
    CGEventRef event = CGEventCreateKeyboardEvent(nullptr, key, true);
    CGEventPostToPSN(&process, event);
    CFRelease(event);
}

// A window of this process that has selected no events.
class OwnWindow
{
public:
    OwnWindow()
    {
        const xcb_screen_t* const screen = xcb_setup_roots_iterator(&x11.setup()).data;
        window = xcb_generate_id(x11.xcb());
        xcb_create_window(x11.xcb(), XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
        x11.isDone(xcb_map_window_checked(x11.xcb(), window));
    }
    X11Reply<xcb_generic_event_t> nextEvent()
    {
        X11Reply<xcb_generic_event_t> event;
        const auto hasCome = [&] {
            event.reset(xcb_poll_for_event(x11.xcb()));
            return event != nullptr;
        };
        return QTest::qWaitFor(hasCome) ? std::move(event) : nullptr;
    }

    X11Connection x11;
    xcb_window_t window;
};

} // namespace

class KeySendDisplayTest : public TestCase
{
    Q_OBJECT

    void startWindowManager();
    int find(const QString& name)
    {
        sender.setProcNameList();
        return sender.getPosFromProcName(name);
    }

    std::unique_ptr<XServer> server;
    std::unique_ptr<Program> windowManager;
    QKeyEventSend sender;

private slots:
    void init();
    void cleanup();

    void typesIntoTheNamedProcessOnly_data();
    void typesIntoTheNamedProcessOnly();
    void choosesTheWindow_data() { typesIntoTheNamedProcessOnly_data(); }
    void choosesTheWindow();
    void followsTheKeyMap();
    void findsApplications();
    void leavesOutItself();
    void reachesClientsThatSelectNoKeys();
    void reachesABusyProcess();
    void losesKeysOfADeadProcess();
    void takesNoLaterProcessForAnEarlier();
    void outlivesTheWindowManager();
    void outlivesTheServer();
    void doesNotHangWithTheServer();
    void needsNoServer_data();
    void needsNoServer();
};

void KeySendDisplayTest::init()
{
    TestCase::init();
    server = std::make_unique<XServer>();
    if (!server->isRunning()) {
        QSKIP(qPrintable(server->why()));
    }
    qputenv("DISPLAY", server->display().toLatin1());
}

void KeySendDisplayTest::cleanup()
{
    windowManager.reset();
    server.reset();
    TestCase::cleanup();
}

void KeySendDisplayTest::startWindowManager()
{
    windowManager = std::make_unique<Program>(QStringLiteral("openbox"), QStringList());
    if (!windowManager->process.waitForStarted()) {
        QSKIP("openbox is not installed");
    }
    // It has taken over when it shows its own window.
    QTRY_VERIFY_WITH_TIMEOUT(
        [] {
            QProcess query;
            query.start(QStringLiteral("xprop"),
                        {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")});
            query.waitForFinished();
            return query.readAllStandardOutput().contains("window id");
        }(),
        20000);
}

void KeySendDisplayTest::typesIntoTheNamedProcessOnly_data()
{
    QTest::addColumn<bool>("isManaged");
    QTest::newRow("no window manager") << false;
    QTest::newRow("openbox") << true;
}

void KeySendDisplayTest::typesIntoTheNamedProcessOnly()
{
    QFETCH(bool, isManaged);
    if (isManaged) {
        startWindowManager();
    }
    Receiver daw(kDaw);
    Receiver focused(QStringLiteral("pro tools"));
    const int pos = find(kDaw);
    QVERIFY(pos >= 0);

    // Bars and markers of both applications, then the single keys.
    QStringList expected;
    const auto type = [&](unsigned char key, bool isCmd, bool isVirtualKey, unsigned int keysym,
                          int modifiers) {
        sender.sendKeyEvent(pos, key, isCmd, isVirtualKey);
        expected += pressed(keysym, modifiers);
    };
    type(0x51, false, true, 0xffbd, Qt::NoModifier);
    for (const char digit : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '9'}) {
        type(static_cast<unsigned char>(digit), false, false, 0xffb0U + unsigned(digit - '0'),
             Qt::KeypadModifier);
    }
    type(0x4c, false, true, 0xff8d, Qt::KeypadModifier);
    type(0x41, false, true, 0xffae, Qt::KeypadModifier);
    type(0x11, true, true, 't', Qt::ControlModifier);
    type(0x24, false, true, 0xff0d, Qt::NoModifier);
    type(0x29, true, true, ';', Qt::ControlModifier);
    type(0x30, false, true, 0xff09, Qt::NoModifier);
    type(0x31, false, true, ' ', Qt::NoModifier);
    type(0x52, false, true, 0xffb0, Qt::KeypadModifier);
    sender.sendKeyEvent(pos, '-', false, false); // Not one of the program's keys.
    QCOMPARE(daw.keys(expected.size()), expected);

    // Whatever had strayed to the other window would have come before this.
    sender.sendKeyEvent(find(QStringLiteral("pro tools")), 0x31, false, true);
    QCOMPARE(focused.keys(2), pressed(' ', Qt::NoModifier));
    QCOMPARE(daw.keys(expected.size()), expected);
    QCOMPARE(daw.read().filter(QStringLiteral("active")).size(), 1); // Not raised to type.
}

void KeySendDisplayTest::choosesTheWindow()
{
    QFETCH(bool, isManaged);
    if (isManaged) {
        startWindowManager();
    }
    Receiver daw(kDaw);
    const unsigned int first = daw.activeWindow();
    QVERIFY(daw.command(QStringLiteral("open")));
    const unsigned int second = daw.activeWindow(2);
    QVERIFY(daw.command(QStringLiteral("open")));
    const unsigned int third = daw.activeWindow(3);
    X11Connection x11;
    const auto window = [&] { return keyWindow(x11, static_cast<pid_t>(daw.process.processId())); };
    QTRY_COMPARE(window(), third);
    QVERIFY(daw.command(QStringLiteral("lower")));
    QCOMPARE(window(), third); // Still active.

    const Receiver other(QStringLiteral("Other"));
    QTRY_COMPARE(window(), second); // Topmost of its own.
    QVERIFY(daw.command(QStringLiteral("close")));
    QVERIFY(daw.command(QStringLiteral("close")));
    QTRY_COMPARE(window(), first);
    QVERIFY(daw.command(QStringLiteral("close")));
    QTRY_COMPARE(find(kDaw), -1); // No window, no application.
    QCOMPARE(daw.process.state(), QProcess::Running);
}

void KeySendDisplayTest::followsTheKeyMap()
{
    Receiver daw(kDaw);
    const int pos = find(kDaw);
    sender.sendKeyEvent(pos, 0x29, true, true);
    QStringList expected = pressed(';', Qt::ControlModifier);
    QCOMPARE(daw.keys(2), expected);

    if (QProcess::execute(QStringLiteral("setxkbmap"), {QStringLiteral("de")}) != 0) {
        QSKIP("setxkbmap is not installed");
    }
    sender.sendKeyEvent(pos, 0x29, true, true); // Shift and comma there.
    sender.sendKeyEvent(pos, '7', false, false);
    expected += pressed(';', Qt::ControlModifier | Qt::ShiftModifier);
    expected += pressed(0xffb7, Qt::KeypadModifier);
    QCOMPARE(daw.keys(6), expected);
}

void KeySendDisplayTest::findsApplications()
{
    Receiver first(kDaw);
    Receiver second(kDaw);
    const Receiver windows(QStringLiteral("Studio One.exe"));
    // Of a name the kernel keeps 15 bytes; the file may have more of it, or another name.
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("Studio One Artist Edition"));
    QVERIFY(QFile::link(QStringLiteral(KEYRECEIVER), file));
    const Receiver longName(QStringLiteral("Studio One Arti"), file);
    const Receiver otherName(QStringLiteral("keyreceiver_of_"));

    sender.setProcNameList();
    const int pos = sender.getPosFromProcName(kDaw);
    QVERIFY(pos >= 0);
    QVERIFY(sender.getPosFromProcName(QStringLiteral("Studio One")) >= 0);
    QVERIFY(sender.getPosFromProcName(QStringLiteral("keyreceiver_of_")) >= 0);
    QVERIFY(sender.getPosFromProcName(QStringLiteral("Studio One Artist Edition")) >= 0);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("PRO TOOLS")), -1);
    QCOMPARE(sender.getPosFromProcName(QStringLiteral("keyreceiver")), -1);

    // The one that started first, and when that has gone, the other.
    sender.sendKeyEvent(pos, 0x31, false, true);
    QCOMPARE(first.keys(2).size(), 2);
    QCOMPARE(second.keys(0), QStringList());
    first.kill();
    sender.sendKeyEvent(find(kDaw), 0x30, false, true);
    QCOMPARE(second.keys(2), pressed(0xff09, Qt::NoModifier));
}

void KeySendDisplayTest::leavesOutItself()
{
    const OwnWindow own;
    // This process started earlier, so that it would come first.
    const Receiver other(QStringLiteral("Other"));
    QCOMPARE(find(QStringLiteral("Other")), 0);
}

void KeySendDisplayTest::reachesClientsThatSelectNoKeys()
{
    OwnWindow own;
    ProcessSerialNumber self = {0, kNoProcess};
    QCOMPARE(int(GetCurrentProcess(&self)), int(noErr));
    post(self, 0x53);
    const auto event = own.nextEvent();
    QVERIFY(event);
    const auto* const key = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
    QCOMPARE(key->response_type & 0x7f, XCB_KEY_PRESS);
    QCOMPARE(key->event, own.window);
    QCOMPARE(int(key->detail), 87); // Keypad 1
    QCOMPARE(int(key->state), int(XCB_MOD_MASK_2));
    QVERIFY(key->time != XCB_CURRENT_TIME);
}

void KeySendDisplayTest::reachesABusyProcess()
{
    Receiver daw(kDaw);
    const int pos = find(kDaw);
    const auto pid = static_cast<pid_t>(daw.process.processId());
    ::kill(pid, SIGSTOP);
    sender.sendKeyEvent(pos, '9', false, false);
    sender.sendKeyEvent(pos, '9', false, false);
    ::kill(pid, SIGCONT);
    const QStringList nine = pressed(0xffb9, Qt::KeypadModifier);
    QCOMPARE(daw.keys(4), nine + nine); // Two presses, not one held down.
}

void KeySendDisplayTest::losesKeysOfADeadProcess()
{
    auto daw = std::make_unique<Receiver>(kDaw);
    Receiver other(QStringLiteral("Other"));
    const int stale = find(kDaw);
    daw.reset();
    sender.sendKeyEvent(stale, 0x31, false, true);

    Receiver restarted(kDaw);
    sender.sendKeyEvent(stale, 0x31, false, true);
    sender.sendKeyEvent(find(kDaw), 0x30, false, true);
    QCOMPARE(restarted.keys(2), pressed(0xff09, Qt::NoModifier));
    QCOMPARE(other.keys(0), QStringList());
}

void KeySendDisplayTest::takesNoLaterProcessForAnEarlier()
{
    Receiver daw(kDaw);
    ProcessSerialNumber process = {0, kNoProcess};
    QCOMPARE(int(GetNextProcess(&process)), int(noErr));
    // As if the number had belonged to another process before.
    post({process.highLongOfPSN - 1, process.lowLongOfPSN}, 0x31);
    sender.sendKeyEvent(find(kDaw), 0x30, false, true);
    QCOMPARE(daw.keys(2), pressed(0xff09, Qt::NoModifier));
}

void KeySendDisplayTest::outlivesTheWindowManager()
{
    startWindowManager();
    Receiver early(kDaw);
    QVERIFY(early.command(QStringLiteral("minimize")));
    const Receiver other(QStringLiteral("Other")); // The window manager has seen both.
    sender.sendKeyEvent(find(kDaw), 0x31, false, true);
    QCOMPARE(early.keys(2), pressed(' ', Qt::NoModifier));

    early.kill();
    windowManager->kill(); // It leaves a list of windows behind.
    Receiver late(kDaw);
    sender.sendKeyEvent(find(kDaw), 0x31, false, true);
    QCOMPARE(late.keys(2), pressed(' ', Qt::NoModifier));
    QCOMPARE(find(QStringLiteral("Other")), 0);
}

void KeySendDisplayTest::outlivesTheServer()
{
    int pos = 0;
    {
        const Receiver daw(kDaw);
        pos = find(kDaw);
        QVERIFY(pos >= 0);
        server->kill();
    }
    sender.sendKeyEvent(pos, 0x31, false, true);
    QCOMPARE(find(kDaw), -1);

    server = std::make_unique<XServer>();
    QVERIFY2(server->isRunning(), qPrintable(server->why()));
    qputenv("DISPLAY", server->display().toLatin1());
    Receiver daw(kDaw);
    sender.sendKeyEvent(find(kDaw), 0x31, false, true);
    QCOMPARE(daw.keys(2), pressed(' ', Qt::NoModifier));
}

void KeySendDisplayTest::doesNotHangWithTheServer()
{
    constexpr int kKeyMs = 130;
    constexpr int kWaitMs = 1000; // For the answer, once.
    constexpr int kSlackMs = 500;
    Receiver daw(kDaw);
    const int pos = find(kDaw);
    server->suspend(true);
    QElapsedTimer waited;
    waited.start();
    for (int i = 0; i < 5; ++i) {
        sender.sendKeyEvent(pos, 0x31, false, true);
    }
    QVERIFY2(waited.elapsed() < kWaitMs + 5 * kKeyMs + kSlackMs,
             qPrintable(QString::number(waited.elapsed())));
    QCOMPARE(find(kDaw), -1);

    server->suspend(false);
    QTRY_COMPARE(find(kDaw), pos);
    sender.sendKeyEvent(pos, 0x30, false, true);
    QCOMPARE(daw.keys(2), pressed(0xff09, Qt::NoModifier));
}

void KeySendDisplayTest::needsNoServer_data()
{
    QTest::addColumn<QByteArray>("display");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("no server there") << QByteArray(":54321");
    QTest::newRow("malformed") << QByteArray("display");
}

void KeySendDisplayTest::needsNoServer()
{
    QFETCH(QByteArray, display);
    const Receiver daw(kDaw);
    QCOMPARE(find(kDaw), 0);
    server->kill(); // The connection that the sender has.
    display.isNull() ? qunsetenv("DISPLAY") : qputenv("DISPLAY", display);
    QCOMPARE(find(kDaw), -1);
    sender.sendKeyEvent(0, 0x31, false, true);
}

VELT_TEST_MAIN(KeySendDisplayTest)
#include "tst_keysend_display.moc"
