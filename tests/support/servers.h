// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTest>

#include <functional>
#include <optional>

// Ends the test program as failed, with the reason, where VELT_NEEDS_SERVERS is set.
void failIfServersAreNeeded(const QString& whyThereIsNone);

// Starts a program that ends with the test program, even if that crashes.
void startAsDependent(QProcess& process, const QString& program, const QStringList& arguments);

// A program that a test needs, ready when it is constructed and ended with the object. Where it is
// not installed, isRunning() is false and why() has the reason, for a test to be skipped.
class Server
{
public:
    Q_DISABLE_COPY_MOVE(Server)

    bool isRunning() const { return process.state() == QProcess::Running; }
    QString why() const { return reason; }
    void kill();                // As a crash would: SIGKILL.
    void suspend(bool stopped); // SIGSTOP, SIGCONT.

protected:
    Server() = default;
    ~Server() { stop(); }
    // Waits until it is ready; false if it does not start.
    bool start(const QString& program, const QStringList& arguments,
               const std::function<bool()>& isReady);
    void stop();

    QProcess process;

private:
    QString reason;
};

// Skips the test function, with the reason, where the server does not run.
#define SKIP_WITHOUT(server)                                                                       \
    if (!(server).isRunning())                                                                     \
    QSKIP(qPrintable((server).why()))

// A JACK server with the dummy driver. Ports that this process and its children open afterwards are
// on it; close them first.
class JackServer : public Server
{
public:
    JackServer();
    ~JackServer();

    bool restart(); // A new server under the same name; true when it is ready.

private:
    bool startNamed();

    QString name;
};

#ifdef Q_OS_MACOS
constexpr bool kIsCoreMidi = true;
#else
constexpr bool kIsCoreMidi = false;
#endif

// What MIDI is tested over: CoreMIDI on a Mac, the ALSA sequencer where the machine has one, else a
// JACK server, also if VELT_MIDI is "jack". Ports that this process and its children open
// afterwards are on it.
class MidiSystem
{
public:
    MidiSystem();

    static bool isAlsa();
    bool isJack() const { return jack.has_value(); }
    bool isRunning() const { return !jack || jack->isRunning(); }
    QString why() const { return jack ? jack->why() : QString(); }

private:
    std::optional<JackServer> jack;
};

// An X server with a virtual screen, for the programs whose DISPLAY is display().
class XServer : public Server
{
public:
    explicit XServer(const QString& screen = QStringLiteral("1280x1024x24"));

    QString display() const { return displayName; } // Such as ":99".

private:
    QString displayName;
};

// openbox on the display that DISPLAY names. A window that is shown before it runs may get lost.
class WindowManager : public Server
{
public:
    WindowManager();
};
