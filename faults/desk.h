// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"
#include "standin.h"
#include "windowmanager.h"
#include "windowping.h"

#include <QDir>
#include <QTemporaryDir>

#include <functional>
#include <memory>

// Waits until the condition holds; throws NotAsExpected if it does not come to hold.
void await(const std::function<bool()>& condition, const QString& what);

// The configuration directory of one VELT, with the sample show in it.
class Home
{
public:
    Home();

    QString path() const { return dir.path(); }
    QString files() const { return dir.filePath(QStringLiteral("VELT")); }
    QString setList() const { return files() + QStringLiteral("/VELTSetting.ini"); }
    QString preference() const { return files() + QStringLiteral("/VELTPreference.ini"); }
    void fill() const; // Puts the files there.

private:
    QTemporaryDir dir;
};

QByteArray bytesOf(const QString& path);

// The program, as a process of its own, handled by mouse and keyboard as an operator does. What
// does not happen in time throws NotAsExpected.
class Velt
{
public:
    explicit Velt(const Home& home);
    ~Velt();
    Q_DISABLE_COPY_MOVE(Velt)

    enum Button { Locate, Play, Stop, Reset, Preferences };
    void click(Button button, int times = 1);
    void select(int row);
    void typeCue(int row, const QString& text);
    // Types a cue, and kills the program so long after it began to save it.
    void typeCueAndDie(int row, const QString& text, const Home& home, int afterUs);
    // Opens the preferences and presses OK, after the keys that are named and before the boxes that
    // must come then are confirmed. Milliseconds.
    qint64 confirmPreferences(const QStringList& keys = {}, const QStringList& boxes = {});

    // The number of its windows on the screen, of which a message box is one.
    int windows();
    void pressReturn(); // In whatever window has the focus.

    // Milliseconds until it has handled all events so far; throws if it takes more than kAnswerMs.
    int answers();

    static constexpr int kAnswerMs = 2000;

private:
    QStringList find(const QString& title);
    void enterCue(int row, const QString& text);

    ServerProcess process;
    QTemporaryDir logs;
    QString window;
    WindowPing ping;
};

// All that a show needs, started anew for each fault on the display that DISPLAY names: MIDI
// server, window manager, stand-in DAW, VELT. Gone with the object.
class Desk
{
public:
    Desk();

    void startWindowManager();
    void reopenDawPorts(); // What an operator does in a DAW when a MIDI server has come back.
    void locateByKeys(int row, const QString& place);
    // Throws unless keys, MMC, foot switch and end of song all do their work.
    void playOn();
    // The same after what an operator does to reach servers and DAWs that came back: Reset, and
    // confirmed preferences. Milliseconds of the latter.
    qint64 playOnAfterConfirming();

    JackServer jack;
    Home home;
    std::unique_ptr<WindowManager> windowManager;
    std::unique_ptr<StandIn> daw;
    std::unique_ptr<Velt> velt;
};
