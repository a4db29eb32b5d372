// SPDX-License-Identifier: MIT
#include "desktop.h"
#include "editdata.h"
#include "qmidiin.h"
#include "qmidiout.h"
#include "servers.h"
#include "testcase.h"

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>

// The program itself, as a process: start, close, kill, and what it leaves in its files.
class TestProgram : public TestCase
{
    Q_OBJECT

private slots:
    void init()
    {
        TestCase::init();
        windowManager.reset(); // Before another takes its place.
        windowManager = std::make_unique<WindowManager>();
        SKIP_WITHOUT(*windowManager);
        program.kill();
        program.waitForFinished();
        home = std::make_unique<QTemporaryDir>();
        QDir(home->path()).mkpath("VELT");
        environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", home->path());
        environment.insert("VELT_MIDI", "jack");
        environment.insert("JACK_DEFAULT_SERVER", "velt-nobody");
        environment.insert("JACK_NO_START_SERVER", "1");
    }

    void geometryIsKept()
    {
        {
            QSettings settings(file("DispStatus.ini"), QSettings::IniFormat);
            for (const auto& [key, value] :
                 {std::pair{"X", 210}, {"Y", 130}, {"Width", 620}, {"Height", 540}}) {
                settings.setValue(key, value);
            }
        }
        start();
        QTRY_COMPARE(geometryOnScreen(), QRect(210, 130, 620, 540));
        Desktop::xdotool({"windowsize", "--sync", window(), "700", "600"});
        closeWindow();
        start();
        QTRY_COMPARE(geometryOnScreen(), QRect(210, 130, 700, 600));
        closeWindow();
    }

    void withoutAConfigurationDirectory()
    {
        environment.insert("XDG_CONFIG_HOME", QCoreApplication::applicationFilePath());
        start();
        closeWindow();
    }

    void endsBesideAStalledMidiServer()
    {
        JackServer jack;
        SKIP_WITHOUT(jack);
        environment.insert("JACK_DEFAULT_SERVER", qEnvironmentVariable("JACK_DEFAULT_SERVER"));
        QMidiOut source;
        source.openVirtualPort("source");
        QMidiIn sink;
        sink.openVirtualPort("sink");
        EditData data;
        data.MidiInPort = data.ShortcutMidiInPort = sink.getPorts().value(0);
        data.MidiOutPort = source.getPorts().value(0);
        data.writePreference(file("VELTPreference.ini"));
        start();
        window();
        jack.suspend(true);
        closeWindow();
        QVERIFY(QFile::exists(file("DispStatus.ini")));
        jack.suspend(false);
    }

    void endsBySignal_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void endsBySignal()
    {
        QFETCH(int, signal);
        EditData data;
        data.SongList = {{1, "Opener", {}, 1, 12}};
        const EditDataSet entry{kSetTypeSong, data.SongList[0], {}, {}};
        data.ShowList = {
            {"Friday", {}, std::vector<EditDataSet>(20, entry)}}; // A row wherever one clicks.
        data.writeEdit(file("VELTSetting.ini"));
        start();
        const QString velt = window();
        Desktop::xdotool({"windowactivate", "--sync", velt, "mousemove", "--window", velt, "400",
                          "250", "click", "--repeat", "2", "1", "type", "last words"});
        const auto typed = [this] {
            QFile saved(file("VELTSetting.ini"));
            return saved.open(QIODevice::ReadOnly) && saved.readAll().contains("last words");
        };
        QVERIFY(!typed()); // The cell is still open.
        ::kill(static_cast<pid_t>(program.processId()), signal);
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY(typed());
        QVERIFY(QFile::exists(file("DispStatus.ini")));
    }

private:
    void start()
    {
        program.setProcessEnvironment(environment);
        startAsDependent(program, VELT_PROGRAM, {});
        QVERIFY(program.waitForStarted());
    }

    // Waits for it; its X id.
    static QString window()
    {
        QStringList ids;
        [&ids] { QTRY_VERIFY_WITH_TIMEOUT(!(ids = Desktop::windows("VELT")).isEmpty(), 30000); }();
        return ids.value(0);
    }

    static QRect geometryOnScreen()
    {
        QProcess info;
        info.start("xwininfo", {"-id", window()});
        info.waitForFinished();
        const QString output = info.readAllStandardOutput();
        const auto value = [&output](const QString& name) {
            return QRegularExpression(name + ": +(-?\\d+)").match(output).captured(1).toInt();
        };
        return {value("Absolute upper-left X"), value("Absolute upper-left Y"), value("Width"),
                value("Height")};
    }

    void closeWindow()
    {
        Desktop::xdotool({"windowactivate", "--sync", window(), "key", "alt+F4"});
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
    }

    QString file(const QString& name) const { return home->filePath("VELT/" + name); }

    std::unique_ptr<WindowManager> windowManager;
    std::unique_ptr<QTemporaryDir> home;
    QProcessEnvironment environment;
    QProcess program;
};

VELT_DISPLAY_TEST_MAIN(TestProgram)
#include "tst_program.moc"
