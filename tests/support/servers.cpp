// SPDX-License-Identifier: MIT
#include "servers.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QStandardPaths>
#include <QThread>

#include <csignal>
#include <functional>
#ifdef Q_OS_LINUX
#include <sys/prctl.h>
#endif
#include <unistd.h>

namespace {

constexpr int kStartMs = 10000;

bool waitFor(const std::function<bool()>& condition)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.elapsed() > kStartMs) {
            return false;
        }
        QThread::msleep(10);
    }
    return true;
}

void stop(QProcess& process)
{
    if (process.state() == QProcess::NotRunning) {
        return;
    }
    process.terminate();
    if (!process.waitForFinished(5000)) {
        process.kill();
        process.waitForFinished();
    }
}

} // namespace

void ServerProcess::setupChildProcess()
{
#ifdef Q_OS_LINUX
    prctl(PR_SET_PDEATHSIG, SIGTERM);
#endif
}

JackServer::JackServer(int periodFrames, int framesPerSecond)
    : name(QStringLiteral("velt%1").arg(QCoreApplication::applicationPid())),
      frames(periodFrames),
      rate(framesPerSecond)
{
    qputenv("JACK_DEFAULT_SERVER", name.toLocal8Bit());
    qputenv("JACK_NO_START_SERVER", "1");
    start();
}

JackServer::~JackServer()
{
    // A killed server keeps its place among the eight that a machine can have, until one of the
    // same name ends in order.
    if (wasKilled && !isRunning()) {
        start();
    }
    stop(process);
    // Semaphores of clients that a killed server could not say goodbye to.
    QDir memory(QStringLiteral("/dev/shm"));
    for (const QString& left : memory.entryList({QStringLiteral("jack_sem.*_%1_*").arg(name)})) {
        memory.remove(left);
    }
}

void JackServer::kill()
{
    wasKilled = true;
    process.kill();
    process.waitForFinished();
}

bool JackServer::restart()
{
    stop(process);
    return start();
}

bool JackServer::start()
{
    // The server opens its socket for clients when it is ready; a killed one leaves it behind.
    const QString socket = QStringLiteral("/dev/shm/jack_%1_%2_0").arg(name).arg(getuid());
    QFile::remove(socket);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral("jackd"),
                  {QStringLiteral("-n"), name, QStringLiteral("-r"), QStringLiteral("-S"),
                   QStringLiteral("-t"), QStringLiteral("200"), QStringLiteral("-d"),
                   QStringLiteral("dummy"), QStringLiteral("-r"), QString::number(rate),
                   QStringLiteral("-p"), QString::number(frames)});
    if (!process.waitForStarted()) {
        reason = QStringLiteral("jackd cannot be started: ") + process.errorString();
        return false;
    }
    const bool ready = waitFor([&] { return QFile::exists(socket) || process.waitForFinished(0); });
    if (!ready || !isRunning()) {
        reason = QStringLiteral("jackd is not ready: ") +
                 QString::fromLocal8Bit(process.readAllStandardOutput());
        stop(process);
        return false;
    }
    return true;
}

XServer::XServer(const QString& screen)
{
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), screen, QStringLiteral("-nolisten"), QStringLiteral("tcp"),
                   QStringLiteral("-noreset")});
    if (!process.waitForStarted()) {
        reason = QStringLiteral("Xvfb cannot be started: ") + process.errorString();
        return;
    }
    // The server writes its display number when it is ready.
    QByteArray number;
    while (!number.endsWith('\n') && process.waitForReadyRead(kStartMs)) {
        number += process.readAllStandardOutput();
    }
    if (!number.endsWith('\n')) {
        reason = QStringLiteral("Xvfb is not ready: ") +
                 QString::fromLocal8Bit(process.readAllStandardError());
        stop(process);
        return;
    }
    displayName = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
}

XServer::~XServer()
{
    suspend(false);
    stop(process);
}

void XServer::kill()
{
    process.kill();
    process.waitForFinished();
}

void XServer::suspend(bool stopped)
{
    if (isRunning()) {
        ::kill(static_cast<pid_t>(process.processId()), stopped ? SIGSTOP : SIGCONT);
    }
}
