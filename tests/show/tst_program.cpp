// SPDX-License-Identifier: MIT
#include "editdata.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"
#include "windowmanager.h"

#include <QDir>
#include <QElapsedTimer>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>

#include <cstdlib>

#include <xcb/xcb.h>

// The program itself, as a process: start, close, kill, and what it leaves in its files.
class TestProgram : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void geometryIsKept_data();
    void geometryIsKept();
    void startsWithoutMidiServer();
    void endsBesideAMidiServerThatStandsStill();
    void unwritableConfiguration();
    void killed();
    void noDisplay();
    void cleanupTestCase() { xcb_disconnect(server); }

private:
    void start();
    void writePorts(const QString& input, const QString& output);
    QString window(); // Waits for it; its X id.
    QRect geometryOnScreen();
    void closeWindow();
    static QByteArray run(const QString& name, const QStringList& arguments);
    QString file(const QString& name) const { return home->filePath("VELT/" + name); }

    std::unique_ptr<QTemporaryDir> home;
    QProcessEnvironment environment;
    std::unique_ptr<QProcess> program;
    xcb_connection_t* server = xcb_connect(nullptr, nullptr);
};

void TestProgram::init()
{
    TestCase::init();
    program.reset();
    home = std::make_unique<QTemporaryDir>();
    environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", home->path());
    environment.insert("JACK_DEFAULT_SERVER", "velt-nobody");
    environment.insert("JACK_NO_START_SERVER", "1");
}

QByteArray TestProgram::run(const QString& name, const QStringList& arguments)
{
    QProcess process;
    process.start(name, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

void TestProgram::start()
{
    program = std::make_unique<QProcess>();
    program->setProcessEnvironment(environment);
    program->start(VELT_PROGRAM, QStringList());
    QVERIFY(program->waitForStarted());
}

QString TestProgram::window()
{
    QByteArray id;
    const bool isShown = QTest::qWaitFor(
        [&] {
            id = run("xdotool", {"search", "--onlyvisible", "--name", "^VELT$"}).trimmed();
            return !id.isEmpty();
        },
        10000);
    if (!isShown) {
        QTest::qFail("the window did not appear", __FILE__, __LINE__);
    }
    return QString::fromLatin1(id.split('\n').first());
}

QRect TestProgram::geometryOnScreen()
{
    const auto id = static_cast<xcb_window_t>(window().toUInt());
    xcb_get_geometry_reply_t* size =
        xcb_get_geometry_reply(server, xcb_get_geometry(server, id), nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
    xcb_translate_coordinates_reply_t* corner = xcb_translate_coordinates_reply(
        server, xcb_translate_coordinates(server, id, root, 0, 0), nullptr);
    if (!size || !corner) {
        return {};
    }
    const QRect geometry(corner->dst_x, corner->dst_y, size->width, size->height);
    std::free(size);
    std::free(corner);
    return geometry;
}

// As a window manager does when its close button is pressed (ICCCM, WM_DELETE_WINDOW).
void TestProgram::closeWindow()
{
    const auto id = static_cast<xcb_window_t>(window().toUInt());
    const auto atom = [this](const QByteArray& name) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
            server,
            xcb_intern_atom(server, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr);
        const xcb_atom_t found = reply->atom;
        std::free(reply);
        return found;
    };
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = id;
    event.type = atom("WM_PROTOCOLS");
    event.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(server, 0, id, 0, reinterpret_cast<const char*>(&event));
    xcb_flush(server);
    QVERIFY(program->waitForFinished(20000));
}

void TestProgram::geometryIsKept_data()
{
    QTest::addColumn<bool>("withWindowManager");
    QTest::newRow("bare X server") << false;
    QTest::newRow("openbox") << true;
}

void TestProgram::geometryIsKept()
{
    QFETCH(bool, withWindowManager);
    const WindowManager windowManager(withWindowManager);
    if (windowManager.isMissing) {
        QSKIP("openbox is not installed");
    }
    QDir().mkpath(home->filePath("VELT"));
    {
        QSettings settings(file("DispStatus.ini"), QSettings::IniFormat);
        settings.setValue("Width", 620);
        settings.setValue("Height", 540);
        settings.setValue("X", 210);
        settings.setValue("Y", 130);
    }
    start();
    QTRY_COMPARE(geometryOnScreen(), QRect(210, 130, 620, 540));
    run("xdotool", {"windowsize", "--sync", window(), "700", "600"});
    QTRY_COMPARE(geometryOnScreen().size(), QSize(700, 600));
    const QRect last = geometryOnScreen();
    closeWindow();
    QCOMPARE(program->exitCode(), 0);
    const QSettings settings(file("DispStatus.ini"), QSettings::IniFormat);
    QCOMPARE(settings.value("Width").toInt(), 700);
    QCOMPARE(settings.value("Height").toInt(), 600);

    start();
    QTRY_COMPARE(geometryOnScreen(), last);
    closeWindow();
}

void TestProgram::writePorts(const QString& input, const QString& output)
{
    QDir().mkpath(home->filePath("VELT"));
    EditData data;
    data.MidiInPort = data.ShortcutMidiInPort = input;
    data.MidiOutPort = output;
    data.writePreference(file("VELTPreference.ini"));
}

void TestProgram::startsWithoutMidiServer()
{
    writePorts("Gone:port", "Gone:port");
    QElapsedTimer timer;
    timer.start();
    start();
    window();
    QVERIFY(timer.elapsed() < 5000);
    closeWindow();
    QCOMPARE(program->exitCode(), 0);
}

void TestProgram::endsBesideAMidiServerThatStandsStill()
{
    JackServer jack;
    if (!jack.isRunning()) {
        QSKIP(qPrintable(jack.why()));
    }
    environment.insert("JACK_DEFAULT_SERVER", qEnvironmentVariable("JACK_DEFAULT_SERVER"));
    QMidiOut source;
    source.openVirtualPort("source");
    QMidiIn sink;
    sink.openVirtualPort("sink");
    writePorts(sink.getPorts().value(0), source.getPorts().value(0));
    start();
    window();          // Which comes after the ports,
    QTest::qWait(500); // and the look-out for the server shortly after it.
    jack.suspend(true);
    QElapsedTimer timer;
    timer.start();
    closeWindow();
    QVERIFY(timer.elapsed() < 15000);
    QCOMPARE(program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(program->exitCode(), 0);
    QVERIFY(QFile::exists(file("DispStatus.ini")));
    jack.suspend(false);
}

void TestProgram::unwritableConfiguration()
{
    QFile blocked(home->filePath("file"));
    QVERIFY(blocked.open(QIODevice::WriteOnly));
    environment.insert("XDG_CONFIG_HOME", blocked.fileName());
    start();
    closeWindow();
    QCOMPARE(program->exitStatus(), QProcess::NormalExit);
    QCOMPARE(program->exitCode(), 0);
}

void TestProgram::killed()
{
    start();
    closeWindow();
    QFile status(file("DispStatus.ini"));
    QVERIFY(status.open(QIODevice::ReadOnly));
    const QByteArray before = status.readAll();
    start();
    window();
    program->kill();
    QVERIFY(program->waitForFinished());
    status.seek(0);
    QCOMPARE(status.readAll(), before);

    // What a kill in the middle of a save leaves does not hold up the next one, which removes it.
    const QString leftover = file(".velt-save");
    QVERIFY(QDir().mkpath(leftover + "/1"));
    start();
    closeWindow();
    QVERIFY(!QFile::exists(leftover));
}

void TestProgram::noDisplay()
{
    environment.insert("DISPLAY", ":7654");
    start();
    QVERIFY(program->waitForFinished(10000)); // The toolkit says why and ends; it does not hang.
    QVERIFY(program->exitCode() != 0 || program->exitStatus() == QProcess::CrashExit);
}

VELT_DISPLAY_TEST_MAIN(TestProgram)
#include "tst_program.moc"
