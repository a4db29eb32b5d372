// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QString>

// Real servers for tests, each started by the object and gone with it. Where the program of a
// server is not installed, isRunning() stays false and why() says so; a test then skips.

// Ends with the test program, even if that crashes.
class ServerProcess : public QProcess
{
protected:
    void setupChildProcess() override;
};

// A JACK server with the dummy driver under a name of its own. Every client that this process and
// its children open afterwards connects to it. Stop the clients first. A cycle takes periodFrames
// (8192 at most) / framesPerSecond.
class JackServer
{
public:
    explicit JackServer(int periodFrames = 256, int framesPerSecond = 48000);
    ~JackServer();
    Q_DISABLE_COPY_MOVE(JackServer)

    bool isRunning() const { return process.state() == QProcess::Running; }
    QString why() const { return reason; }
    void kill();    // As a crash would: SIGKILL.
    bool restart(); // A new server under the same name; true when it is ready.

private:
    bool start();

    QString name;
    int frames;
    int rate;
    bool wasKilled = false;
    ServerProcess process;
    QString reason;
};

// An X server with a virtual screen. The display is not put into this process's environment: give
// display() to the programs that are to show themselves there.
class XServer
{
public:
    explicit XServer(const QString& screen = QStringLiteral("1280x1024x24"));
    ~XServer();
    Q_DISABLE_COPY_MOVE(XServer)

    bool isRunning() const { return process.state() == QProcess::Running; }
    QString why() const { return reason; }
    QString display() const { return displayName; } // Such as ":99".
    void kill();
    void suspend(bool stopped); // SIGSTOP, SIGCONT.

private:
    ServerProcess process;
    QString displayName;
    QString reason;
};
