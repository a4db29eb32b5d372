// SPDX-License-Identifier: MIT
#include "servers.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Before it listens, a server refuses clients, though its socket is there already.
bool listens(const QByteArray& socketPath)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::copy(socketPath.begin(), socketPath.end(), address.sun_path);
    const int probe = socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isAnswered =
        connect(probe, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(probe);
    return isAnswered;
}

bool canOpen(const char* device)
{
    const int file = open(device, O_RDWR | O_CLOEXEC);
    close(file);
    return file != -1;
}

} // namespace

void failIfServersAreNeeded(const QString& whyThereIsNone)
{
    if (!qEnvironmentVariableIsEmpty("VELT_NEEDS_SERVERS")) {
        std::fprintf(stderr, "FAIL: not checked, though VELT_NEEDS_SERVERS is set: %s\n",
                     qPrintable(whyThereIsNone));
        std::fflush(nullptr);
        _exit(1); // Whatever the caller is in the middle of; servers end with it.
    }
}

void startAsDependent(QProcess& process, const QString& program, const QStringList& arguments)
{
#ifdef Q_OS_LINUX
    process.start(QStringLiteral("setpriv"),
                  QStringList{QStringLiteral("--pdeathsig"), QStringLiteral("TERM"), program} +
                      arguments);
#else
    process.start(program, arguments);
#endif
}

bool Server::start(const QString& program, const QStringList& arguments,
                   const std::function<bool()>& isReady)
{
    constexpr int kStartMs = 30000;
    constexpr int kLookMs = 10;
    startAsDependent(process, program, arguments);
    process.waitForStarted();
    for (const QDeadlineTimer end(kStartMs); isRunning() && !end.hasExpired();) {
        if (isReady()) {
            return true;
        }
        process.waitForFinished(kLookMs);
    }
    reason = QStringLiteral("%1 is not ready: %2\n").arg(program, process.errorString()) +
             QString::fromLocal8Bit(process.readAllStandardError());
    stop();
    failIfServersAreNeeded(reason);
    return false;
}

void Server::stop()
{
    constexpr int kStopMs = 20000; // A busy machine takes its time.
    if (!isRunning()) {
        return;
    }
    suspend(false);
    process.terminate();
    if (!process.waitForFinished(kStopMs)) {
        kill();
    }
}

void Server::kill()
{
    process.kill();
    process.waitForFinished();
}

void Server::suspend(bool stopped)
{
    if (!isRunning()) {
        return;
    }
    const auto pid = static_cast<pid_t>(process.processId());
    ::kill(pid, stopped ? SIGSTOP : SIGCONT);
    if (stopped) { // On a busy machine its threads stop a moment later.
        siginfo_t info;
        waitid(P_PID, static_cast<id_t>(pid), &info, WSTOPPED | WNOWAIT);
    }
}

JackServer::JackServer() : name(QStringLiteral("velt%1").arg(QCoreApplication::applicationPid()))
{
    qputenv("VELT_MIDI", "jack");
    qputenv("JACK_DEFAULT_SERVER", name.toLocal8Bit());
    qputenv("JACK_NO_START_SERVER", "1");
    startNamed();
}

JackServer::~JackServer()
{
    stop();
    // A killed server keeps its place among the eight that a machine can have, until one of the
    // same name ends in order.
    if (process.exitStatus() == QProcess::CrashExit && startNamed()) {
        stop();
    }
    // Semaphores that a killed server left.
    QDir memory(QStringLiteral("/dev/shm"));
    for (const QString& left : memory.entryList({QStringLiteral("jack_sem.*_%1_*").arg(name)})) {
        memory.remove(left);
    }
}

bool JackServer::restart()
{
    stop();
    return startNamed();
}

bool JackServer::startNamed()
{
    const QString socket = QStringLiteral("/dev/shm/jack_%1_%2_0").arg(name).arg(getuid());
    const QString options = QStringLiteral("-n %1 -r -S -t 200 -d dummy -r 48000 -p 256").arg(name);
    return start(QStringLiteral("jackd"), options.split(QLatin1Char(' ')),
                 [&] { return listens(socket.toLocal8Bit()); });
}

MidiSystem::MidiSystem()
{
    if (isAlsa()) {
        qputenv("VELT_MIDI", "alsa");
    } else if (!kIsCoreMidi) {
        jack.emplace();
    }
}

bool MidiSystem::isAlsa()
{
    // Asked for at first: a JACK server sets VELT_MIDI.
    static const bool isThere = qgetenv("VELT_MIDI") != "jack" && canOpen("/dev/snd/seq");
    return isThere;
}

XServer::XServer(const QString& screen)
{
    const QString options =
        QStringLiteral("-displayfd 1 -screen 0 %1 -dpi 96 -nolisten tcp -noreset");
    // The server writes its display number when it is ready.
    if (start(QStringLiteral("Xvfb"), options.arg(screen).split(QLatin1Char(' ')),
              [this] { return process.canReadLine(); })) {
        displayName = QLatin1Char(':') + QString::fromLatin1(process.readLine().trimmed());
    }
}

WindowManager::WindowManager()
{
    // Its start-up command runs once it manages the windows.
    start(
        QStringLiteral("openbox"),
        {QStringLiteral("--sm-disable"), QStringLiteral("--startup"), QStringLiteral("echo ready")},
        [this] { return process.canReadLine(); });
}
