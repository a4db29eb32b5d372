// SPDX-License-Identifier: MIT
#include "quitsignals.h"

#include <QtGlobal>

#ifdef Q_OS_UNIX

#include <QSocketNotifier>
#include <QTimer>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

// A signal handler may do little more than write: a byte in this pipe wakes the main thread.
std::array<int, 2> wakeUp{-1, -1};

void onSignal(int)
{
    const int savedErrno = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(wakeUp[1], &byte, 1);
    errno = savedErrno;
}

// A signal that the process was started to ignore, as by nohup, stays ignored.
void handle(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : kSignals) {
        struct sigaction old = {};
        sigaction(signal, nullptr, &old);
        if (old.sa_handler != SIG_IGN) {
            sigaction(signal, &action, nullptr);
        }
    }
}

} // namespace

QuitSignals::QuitSignals()
{
    if (::pipe(wakeUp.data()) != 0) {
        return;
    }
    for (const int end : wakeUp) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    auto* notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, this);
    auto* idle = new QTimer(this); // Fires once all that was typed before is handled.
    idle->setSingleShot(true);
    connect(notifier, &QSocketNotifier::activated, idle, [notifier, idle] {
        notifier->setEnabled(false);
        idle->start();
    });
    connect(idle, &QTimer::timeout, this, &QuitSignals::quitRequested);
    handle(onSignal);
}

QuitSignals::~QuitSignals()
{
    if (wakeUp[0] == -1) {
        return;
    }
    handle(SIG_DFL);
    for (int& end : wakeUp) {
        ::close(end);
        end = -1;
    }
}

#else

QuitSignals::QuitSignals() = default;
QuitSignals::~QuitSignals() = default;

#endif
