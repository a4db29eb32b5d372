// SPDX-License-Identifier: MIT
// The key sender over real X servers, with and without a window manager.
#include "macevents.h"
#include "qkeyeventsend.h"
#include "servers.h"
#include "testcase.h"
#include "x11connection.h"
#include "x11windows.h"

#include <QElapsedTimer>
#include <QTemporaryDir>

#include <unistd.h>

namespace {

const QString kDaw = "Pro Tools";

// Any program, killed with the object.
struct Program : QProcess
{
    ~Program() override
    {
        kill();
        waitForFinished();
    }
};

// A stand-in application, its window active when it is constructed.
struct Receiver : Program
{
    explicit Receiver(const QString& name, const QString& file = KEYRECEIVER)
    {
        start(file, {name, "-platform", "xcb"});
        if (reports(1) != "active\n") {
            qFatal("the receiver does not become active");
        }
    }
    // All that it has reported, once so many lines are there.
    QByteArray reports(int lines = 3)
    {
        const auto areThere = [&] {
            text += readAllStandardOutput();
            return text.count('\n') >= lines;
        };
        return QTest::qWaitFor(areThere, 20000) ? text : text + "late";
    }

    QByteArray text;
};

// What a receiver reports of a key.
QByteArray pressed(int keysym, int modifiers = Qt::NoModifier)
{
    const QByteArray key = " keysym " + QByteArray::number(keysym, 16) + " modifiers " +
                           QByteArray::number(modifiers, 16) + '\n';
    return "press" + key + "release" + key;
}

// A window of this process that has selected no events.
struct OwnWindow
{
    OwnWindow()
    {
        xcb_create_window(x11.xcb(), XCB_COPY_FROM_PARENT, window, x11.root(), 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        map();
    }
    void map() { x11.isDone(x11.send(xcb_map_window_checked(x11.xcb(), window))); }

    X11Connection x11;
    xcb_window_t window = xcb_generate_id(x11.xcb());
};

void post(ProcessSerialNumber process, CGKeyCode key)
{
    CGEventRef event = CGEventCreateKeyboardEvent(nullptr, key, true);
    CGEventPostToPSN(&process, event);
    CFRelease(event);
}

} // namespace

class KeySendDisplayTest : public TestCase
{
    Q_OBJECT

    std::unique_ptr<XServer> server;
    std::unique_ptr<Program> windowManager;
    QKeyEventSend sender;

    void startServer()
    {
        server = std::make_unique<XServer>();
        qputenv("DISPLAY", server->display().toLatin1());
    }
    void startWindowManager()
    {
        windowManager = std::make_unique<Program>();
        windowManager->start("openbox", QStringList());
        if (!windowManager->waitForStarted()) {
            failIfServersAreNeeded("openbox is not installed");
            QSKIP("openbox is not installed");
        }
        // It has taken over when it manages a window; while it starts it loses what it should show.
        OwnWindow window;
        const auto listed = [&x11 = window.x11] {
            return x11.numbers(x11.askNumbers(x11.root(), X11Connection::ClientList));
        };
        QTRY_VERIFY((window.map(), !listed().empty()));
    }
    int find(const QString& name)
    {
        sender.setProcNameList();
        return sender.getPosFromProcName(name);
    }
    void press(int pos, unsigned char key) { sender.sendKeyEvent(pos, key, false, true); }
    void chooseTheWindow()
    {
        auto first = std::make_unique<OwnWindow>();
        auto second = std::make_unique<OwnWindow>();
        X11Connection x11;
        const auto becomes = [&x11](xcb_window_t window) {
            return QTest::qWaitFor([&] { return X11Windows(x11).keyWindow(getpid()) == window; });
        };
        QVERIFY(becomes(second->window));
        xcb_set_input_focus(x11.xcb(), XCB_INPUT_FOCUS_PARENT, second->window, XCB_CURRENT_TIME);
        const std::uint32_t below = XCB_STACK_MODE_BELOW;
        xcb_configure_window(x11.xcb(), second->window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
        QVERIFY(becomes(second->window)); // The active one.
        const Receiver other("Other");
        QVERIFY(becomes(first->window)); // The topmost of its own.
        first.reset();
        QVERIFY(becomes(second->window));
        second.reset();
        QVERIFY(becomes(XCB_NONE));
        QCOMPARE(X11Windows(x11).owners(), std::vector{static_cast<pid_t>(other.processId())});
    }

private slots:
    void init()
    {
        TestCase::init();
        startServer();
        if (!server->isRunning()) {
            QSKIP(qPrintable(server->why()));
        }
    }
    void cleanup()
    {
        windowManager.reset();
        server.reset();
        TestCase::cleanup();
    }

    void typesIntoTheNamedProcessOnly()
    {
        Receiver daw(kDaw);
        Receiver focused("pro tools");
        const int pos = find(kDaw);
        QByteArray expected("active\n"); // Once: it is not raised to type.
        const auto type = [&](int key, bool isCmd, bool isVirtualKey, int keysym, int modifiers) {
            sender.sendKeyEvent(pos, static_cast<unsigned char>(key), isCmd, isVirtualKey);
            expected += pressed(keysym, modifiers);
        };
        // Bars and markers of both applications.
        type(0x51, false, true, 0xffbd, Qt::NoModifier);
        for (const char digit : {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '9'}) {
            type(digit, false, false, 0xffb0 + digit - '0', Qt::KeypadModifier);
        }
        type(0x4c, false, true, 0xff8d, Qt::KeypadModifier);
        type(0x41, false, true, 0xffae, Qt::KeypadModifier);
        type(0x11, true, true, 't', Qt::ControlModifier);
        type(0x24, false, true, 0xff0d, Qt::NoModifier);
        type(0x29, true, true, ';', Qt::ControlModifier);
        sender.sendKeyEvent(pos, '-', false, false); // Not one of the program's keys.
        QCOMPARE(daw.reports(expected.count('\n')), expected);
        if (QProcess::execute("setxkbmap", {"de"}) == 0) {
            type(0x29, true, true, ';', Qt::ControlModifier | Qt::ShiftModifier);
            type('7', false, false, 0xffb7, Qt::KeypadModifier);
        }

        // Whatever had strayed to the other window would have come before this.
        press(find("pro tools"), 0x31);
        QCOMPARE(focused.reports(), "active\n" + pressed(' '));
        QCOMPARE(daw.reports(expected.count('\n')), expected);
    }

    void choosesTheWindow()
    {
        chooseTheWindow();
        startWindowManager();
        chooseTheWindow();
    }

    void reachesClientsThatSelectNoKeys()
    {
        OwnWindow own;
        ProcessSerialNumber self = {0, kNoProcess};
        GetCurrentProcess(&self);
        post(self, 0x53);
        X11Reply<xcb_generic_event_t> event;
        QVERIFY(QTest::qWaitFor([&] {
            event.reset(xcb_poll_for_event(own.x11.xcb()));
            return event != nullptr;
        }));
        const auto* const key = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
        QVERIFY(key->event == own.window && key->time != XCB_CURRENT_TIME);
        QCOMPARE(int(key->detail), 87); // Keypad 1
        QCOMPARE(int(key->state), int(XCB_MOD_MASK_2));

        // This process started earlier, so that it would come first if it were listed.
        const Receiver other("Other");
        QCOMPARE(find("Other"), 0);
    }

    void findsApplications()
    {
        const Receiver windows("Studio One.exe");
        // Of a name the kernel keeps 15 bytes; the file may have more of it, or another name.
        const QTemporaryDir folder;
        const QString file = folder.filePath("Studio One Artist Edition");
        QVERIFY(QFile::link(KEYRECEIVER, file));
        const Receiver longName("Studio One Arti", file);
        const Receiver otherName("keyreceiver_of_");
        using Case = std::pair<const char*, bool>;
        for (const auto& [name, isThere] :
             {Case("Studio One", true), Case("STUDIO ONE", false), Case("keyreceiver_of_", true),
              Case("keyreceiver", false), Case("Studio One Artist Edition", true)}) {
            QVERIFY2((find(name) >= 0) == isThere, name);
        }
    }

    void losesKeysOfADeadProcess()
    {
        auto first = std::make_unique<Receiver>(kDaw);
        Receiver second(kDaw);
        const int pos = find(kDaw);
        press(pos, 0x31);
        QCOMPARE(first->reports(), "active\n" + pressed(' ')); // The one that started first.
        first.reset();
        press(pos, 0x31);
        // As if the number of the second had belonged to another process before.
        ProcessSerialNumber process = {0, kNoProcess};
        GetNextProcess(&process);
        post({process.highLongOfPSN - 1, process.lowLongOfPSN}, 0x31);
        press(find(kDaw), 0x30);
        QCOMPARE(second.reports(), "active\n" + pressed(0xff09));
    }

    void outlivesTheWindowManager()
    {
        startWindowManager();
        Receiver early(kDaw);
        const QStringList minimize = {"search",      "--onlyvisible",  "--class",
                                      "keyreceiver", "windowminimize", "--sync"};
        QCOMPARE(QProcess::execute("xdotool", minimize), 0);
        press(find(kDaw), 0x31);
        QCOMPARE(early.reports(), "active\n" + pressed(' '));

        windowManager.reset(); // It leaves a list of windows behind.
        Receiver late("Late");
        press(find("Late"), 0x31);
        QCOMPARE(late.reports(), "active\n" + pressed(' '));
    }

    void outlivesTheServer()
    {
        constexpr int kMaxMs = 5 * 130 + 1000 + 500; // The keys, one wait for an answer, slack.
        Receiver daw(kDaw);
        const int pos = find(kDaw);
        server->suspend(true);
        QElapsedTimer waited;
        waited.start();
        for (int i = 0; i < 5; ++i) {
            press(pos, 0x31);
        }
        QVERIFY(waited.elapsed() < kMaxMs);
        QCOMPARE(find(kDaw), -1);
        server->suspend(false);
        QTRY_COMPARE(find(kDaw), pos);
        press(pos, 0x30);
        QCOMPARE(daw.reports(), "active\n" + pressed(0xff09));

        server->kill();
        for (const char* display : {"", ":54321", "display"}) {
            press(pos, 0x31);
            qputenv("DISPLAY", display);
            QCOMPARE(find(kDaw), -1);
        }
        startServer();
        Receiver restarted(kDaw);
        QTRY_VERIFY(find(kDaw) != -1);
        press(find(kDaw), 0x31);
        QCOMPARE(restarted.reports(), "active\n" + pressed(' '));
    }
};

VELT_TEST_MAIN(KeySendDisplayTest)
#include "tst_keysend_display.moc"
