// SPDX-License-Identifier: MIT
#include "standin.h"

#include <QTest>

#include <csignal>

const QString StandIn::kMmcPort = "Rehearsal MMC:commands";
const QString StandIn::kNotesPort = "Rehearsal DAW:notes";
const QString StandIn::kFootSwitchPort = "Rehearsal Foot switch:notes";

StandIn::StandIn(const QString& name)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(VELT_REHEARSAL, {name});
}

StandIn::~StandIn()
{
    suspend(false);
    process.terminate();
    if (!process.waitForFinished(5000)) {
        kill();
    }
}

bool StandIn::isReady()
{
    return QTest::qWaitFor([this] { return count("ready") > 0; }, 10000);
}

void StandIn::press(const QString& command)
{
    process.write(command.toUtf8() + '\n');
    process.waitForBytesWritten();
}

void StandIn::kill()
{
    process.kill();
    process.waitForFinished();
}

void StandIn::suspend(bool stopped)
{
    if (process.state() == QProcess::Running) {
        ::kill(static_cast<pid_t>(process.processId()), stopped ? SIGSTOP : SIGCONT);
    }
}

const QVector<StandIn::Event>& StandIn::events()
{
    unread += process.readAllStandardOutput();
    for (int end = unread.indexOf('\n'); end != -1; end = unread.indexOf('\n')) {
        const QString line = QString::fromUtf8(unread.left(end));
        unread.remove(0, end + 1);
        received.append({line.section(' ', 0, 0).toDouble(), line.section(' ', 1)});
    }
    return received;
}

QStringList StandIn::texts(const QStringList& words)
{
    QStringList found;
    for (const Event& event : events()) {
        if (words.contains(event.text.section(' ', 0, 0))) {
            found << event.text;
        }
    }
    return found;
}

int StandIn::count(const QString& text)
{
    int found = 0;
    for (const Event& event : events()) {
        found += event.text == text ? 1 : 0;
    }
    return found;
}

void StandIn::forget()
{
    events();
    received.clear();
}
