// SPDX-License-Identifier: MIT
// The key sender over real X servers, with and without a window manager.
#include "desktop.h"
#include "macevents.h"
#include "qkeyeventsend.h"
#include "servers.h"
#include "testcase.h"
#include "x11connection.h"
#include "x11windows.h"

#include <QDeadlineTimer>
#include <QTemporaryDir>

#include <unistd.h>

namespace {

constexpr int kWaitMs = 20000; // For a busy machine.

const QString kDaw = "Pro Tools";

// A stand-in application, its window active when it is constructed.
struct Receiver : Server
{
    explicit Receiver(const QString& name = kDaw, const QString& file = KEYRECEIVER)
    {
        start(file, {name, "-platform", "xcb"}, [this] { return reports(0) == "active\n"; });
    }
    pid_t pid() const { return static_cast<pid_t>(process.processId()); }
    // All that it has reported; waits for this many lines.
    QByteArray reports(qsizetype lines = 3)
    {
        const auto areThere = [&] {
            text += process.readAllStandardOutput();
            return text.count('\n') >= lines;
        };
        return QTest::qWaitFor(areThere, kWaitMs) ? text : text + "late";
    }

    QByteArray text;
};

// What a receiver reports of a key.
QByteArray pressed(int keysym, int modifiers = Qt::NoModifier)
{
    const auto key = QString(" keysym %1 modifiers %2\n").arg(keysym, 0, 16).arg(modifiers, 0, 16);
    return ("press" + key + "release" + key).toLatin1();
}

// A window of this process that has selected no events.
struct OwnWindow
{
    OwnWindow()
    {
        xcb_create_window(x11.xcb(), XCB_COPY_FROM_PARENT, window, x11.root(), 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        done(xcb_map_window_checked(x11.xcb(), window));
    }
    void done(xcb_void_cookie_t request) { x11.isDone(x11.send(request)); }
    void set(xcb_window_t of, const char* property, const std::vector<std::uint32_t>& values)
    {
        const auto length = static_cast<std::uint16_t>(strlen(property));
        const auto name =
            x11.reply<xcb_intern_atom_reply_t>(xcb_intern_atom(x11.xcb(), 0, length, property));
        done(xcb_change_property_checked(x11.xcb(), XCB_PROP_MODE_REPLACE, of, name->atom,
                                         XCB_ATOM_WINDOW, 32,
                                         static_cast<std::uint32_t>(values.size()), values.data()));
    }
    // The next key event: the keycode, with 0x100 for a release; 0 if none comes.
    int awaitKey()
    {
        const auto isThere = [this] {
            key.reset(reinterpret_cast<xcb_key_press_event_t*>(xcb_poll_for_event(x11.xcb())));
            return key != nullptr;
        };
        (void)QTest::qWaitFor(isThere, kWaitMs);
        return key ? key->detail + (key->response_type & 1 ? 0x100 : 0) : 0;
    }

    X11Connection x11;
    xcb_window_t window = xcb_generate_id(x11.xcb());
    X11Reply<xcb_key_press_event_t> key;
};

// Posts to this process or another.
void post(CGKeyCode key, bool isDown, std::optional<ProcessSerialNumber> other = {})
{
    ProcessSerialNumber process = {0, kNoProcess};
    GetCurrentProcess(&process);
    process = other.value_or(process);
    CGEventRef event = CGEventCreateKeyboardEvent(nullptr, key, isDown);
    CGEventPostToPSN(&process, event);
    CFRelease(event);
}

} // namespace

class TestKeySendDisplay : public TestCase
{
    Q_OBJECT

    std::unique_ptr<XServer> server;
    std::unique_ptr<WindowManager> windowManager;
    QKeyEventSend sender;

    void startServer()
    {
        server = std::make_unique<XServer>();
        qputenv("DISPLAY", server->display().toLatin1());
        SKIP_WITHOUT(*server);
    }
    void startWindowManager()
    {
        windowManager = std::make_unique<WindowManager>();
        SKIP_WITHOUT(*windowManager);
    }
    int find(const QString& name)
    {
        sender.setProcNameList();
        return sender.getPosFromProcName(name);
    }
    void press(int pos, unsigned char key) { sender.sendKeyEvent(pos, key, false, true); }
    void chooseTheWindow()
    {
        X11Connection x11;
        X11Windows windows(x11);
        // Openbox ignores one of some ten requests to map a window while it starts.
        const auto becomes = [&](xcb_window_t window) {
            const auto isChosen = [&] {
                xcb_map_window(x11.xcb(), window);
                return windows.keyWindow(getpid()) == window;
            };
            return QTest::qWaitFor(isChosen, kWaitMs);
        };
        auto first = std::make_unique<OwnWindow>();
        QVERIFY(becomes(first->window));
        auto second = std::make_unique<OwnWindow>();
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
        QTRY_COMPARE_WITH_TIMEOUT(windows.keyWindow(getpid()), xcb_window_t(XCB_NONE), kWaitMs);
        QCOMPARE(windows.owners(), std::set{other.pid()});
    }

private slots:
    void init()
    {
        TestCase::init();
        startServer();
    }
    void cleanup()
    {
        windowManager.reset();
        server.reset();
        TestCase::cleanup();
    }

    void typesIntoTheNamedProcessOnly()
    {
        Receiver daw;
        Receiver focused("pro tools");
        const int pos = find(kDaw);
        QByteArray expected("active\n"); // Once: it is not raised to type.
        const auto type = [&](int key, bool isCmd, bool isVirtualKey, int keysym, int modifiers) {
            sender.sendKeyEvent(pos, static_cast<unsigned char>(key), isCmd, isVirtualKey);
            expected += pressed(keysym, modifiers);
        };
        type(0x51, false, true, 0xffbd, Qt::NoModifier);
        type('9', false, false, 0xffb9, Qt::NoModifier);
        type('9', false, false, 0xffb9, Qt::NoModifier); // Not taken for a repeat.
        type(0x41, false, true, 0xffae, Qt::NoModifier);
        type(0x11, true, true, 't', Qt::ControlModifier);
        sender.sendKeyEvent(pos, '-', false, false); // Not one of the program's keys.
        QCOMPARE(daw.reports(expected.count('\n')), expected);
        if (QProcess::execute("setxkbmap", {"de"}) == 0) {
            type(0x29, true, true, ';', Qt::ControlModifier | Qt::ShiftModifier);
            type('7', false, false, 0xffb7, Qt::NoModifier);
        }

        // A stray key would have reached the other window before this one.
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

    // With a scripted window manager.
    void keepsAPressAndItsReleaseTogether()
    {
        OwnWindow first;
        OwnWindow second;
        const auto root = first.x11.root();
        const auto list = [&](const std::vector<std::uint32_t>& windows) {
            first.set(root, "_NET_CLIENT_LIST_STACKING", windows);
        };
        first.set(root, "_NET_SUPPORTING_WM_CHECK", {first.window});
        first.set(first.window, "_NET_SUPPORTING_WM_CHECK", {first.window});
        list({first.window, second.window});
        post(0x53, true);                                      // Keypad 1
        first.set(root, "_NET_ACTIVE_WINDOW", {first.window}); // Between press and release.
        post(0x53, false);
        QCOMPARE(second.awaitKey(), 87);
        QCOMPARE(second.key->event, second.window);
        QCOMPARE(second.awaitKey(), 0x100 + 87);
        post(0x31, true);
        post(0x31, false);
        QCOMPARE(first.awaitKey(), 65);
        QCOMPARE(first.awaitKey(), 0x100 + 65);

        // A window closes while it is still listed.
        first.set(root, "_NET_ACTIVE_WINDOW", {});
        second.done(xcb_destroy_window_checked(second.x11.xcb(), second.window));
        post(0x30, true);
        list({first.window});
        post(0x30, false);
        QCOMPARE(first.awaitKey(), 23);
        QCOMPARE(first.awaitKey(), 0x100 + 23);

        // This process started earlier, so that it would come first if it were listed.
        list({});
        const Receiver other;
        QCOMPARE(find(kDaw), 0);
    }

    // A window manager that lists nothing, but puts windows into frames.
    void findsWindowsInFrames()
    {
        Receiver daw;
        OwnWindow frame;
        X11Windows windows(frame.x11);
        const xcb_window_t window = windows.keyWindow(daw.pid());
        const std::uint32_t isOverride = 1;
        frame.done(xcb_change_window_attributes_checked(frame.x11.xcb(), frame.window,
                                                        XCB_CW_OVERRIDE_REDIRECT, &isOverride));
        xcb_reparent_window(frame.x11.xcb(), window, frame.window, 0, 0);
        QCOMPARE(windows.keyWindow(getpid()), xcb_window_t(XCB_NONE)); // Not the frame.
        for (const auto& [state, expected] :
             {std::pair(0U, xcb_window_t(XCB_NONE)), {1U, window}, {3U, window}}) {
            frame.set(window, "WM_STATE", {state, XCB_NONE});
            QCOMPARE(windows.keyWindow(daw.pid()), expected);
        }
        press(find(kDaw), 0x31);
        QCOMPARE(daw.reports(), "active\n" + pressed(' '));
        frame.done(xcb_unmap_window_checked(frame.x11.xcb(), frame.window));
        QCOMPARE(find(kDaw), 0); // Iconic.
        frame.set(window, "WM_STATE", {1, XCB_NONE});
        QCOMPARE(find(kDaw), -1); // A mark that a window manager left.
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
        for (const char* name : {"Studio One", "keyreceiver_of_", "Studio One Artist Edition"}) {
            QVERIFY2(find(name) >= 0, name);
        }
        for (const char* name : {"STUDIO ONE", "keyreceiver"}) {
            QVERIFY2(find(name) == -1, name);
        }
    }

    void losesKeysOfADeadProcess()
    {
        auto first = std::make_unique<Receiver>();
        Receiver second;
        const int pos = find(kDaw);
        press(pos, 0x31);
        QCOMPARE(first->reports(), "active\n" + pressed(' ')); // The one that started first.
        first.reset();
        press(pos, 0x31);
        // As if the number of the second had belonged to another process before.
        ProcessSerialNumber process = {0, kNoProcess};
        GetNextProcess(&process);
        post(0x31, true, ProcessSerialNumber{process.highLongOfPSN - 1, process.lowLongOfPSN});
        press(find(kDaw), 0x30);
        QCOMPARE(second.reports(), "active\n" + pressed(0xff09));
    }

    void outlivesTheWindowManager()
    {
        startWindowManager();
        Receiver early;
        Desktop::xdotool(
            {"search", "--onlyvisible", "--class", "keyreceiver", "windowminimize", "--sync"});
        press(find(kDaw), 0x31);
        QCOMPARE(early.reports(), "active\n" + pressed(' '));

        windowManager->kill(); // Its list of windows stays.
        Receiver late("Late");
        press(find("Late"), 0x31);
        QCOMPARE(late.reports(), "active\n" + pressed(' '));
    }

    void outlivesTheServer()
    {
        Receiver daw;
        const int pos = find(kDaw);
        server->suspend(true);
        const QDeadlineTimer end(5 * 130 + 1000 + 500); // The keys, one wait for an answer, slack.
        for (int i = 0; i < 5; ++i) {
            press(pos, 0x31);
        }
        QVERIFY(!end.hasExpired());
        QCOMPARE(find(kDaw), -1);
        server->suspend(false);
        QTRY_COMPARE_WITH_TIMEOUT(find(kDaw), pos, kWaitMs);
        press(pos, 0x30);
        QCOMPARE(daw.reports(), "active\n" + pressed(0xff09));

        server->kill();
        for (const char* display : {"", ":54321", "display"}) {
            press(pos, 0x31);
            qputenv("DISPLAY", display);
            QCOMPARE(find(kDaw), -1);
        }
        startServer();
        Receiver restarted;
        QTRY_VERIFY_WITH_TIMEOUT(find(kDaw) != -1, kWaitMs);
        press(find(kDaw), 0x31);
        QCOMPARE(restarted.reports(), "active\n" + pressed(' '));
    }
};

VELT_TEST_MAIN(TestKeySendDisplay)
#include "tst_keysend_display.moc"
