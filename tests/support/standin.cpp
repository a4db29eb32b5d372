// SPDX-License-Identifier: MIT
#include "standin.h"

#include "desktop.h"

#include <QRegularExpression>

#include <csignal>

const QString StandIn::kMmcPort = "Rehearsal MMC:commands";
const QString StandIn::kNotesPort = "Rehearsal DAW:notes";
const QString StandIn::kFootSwitchPort = "Rehearsal Foot switch:notes";

StandIn::StandIn(const QString& name) : StandIn(QStringList{name})
{
}

StandIn::StandIn(const QStringList& arguments)
{
    process.setStandardErrorFile(QProcess::nullDevice());
    start(VELT_REHEARSAL, arguments, [this] { return has("ready"); });
    forget();
}

void StandIn::press(const QString& commands)
{
    process.write(commands.toUtf8() + '\n');
    process.waitForBytesWritten();
}

void StandIn::type(const QString& keys)
{
    const QString search = "search --onlyvisible --name ^(Pro.Tools|Studio.One)$ key --delay 20 ";
    Desktop::xdotool((search + keys).split(' '));
}

bool StandIn::endsInOrder(int signal)
{
    if (signal != 0) {
        ::kill(static_cast<pid_t>(process.processId()), signal);
    }
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

const QStringList& StandIn::events()
{
    unread += process.readAllStandardOutput();
    for (auto end = unread.indexOf('\n'); end != -1; end = unread.indexOf('\n')) {
        received << QString(unread.left(end)).section(' ', 1); // After the time.
        unread.remove(0, end + 1);
    }
    return received;
}

QStringList StandIn::texts(const QString& word)
{
    return events().filter(QRegularExpression('^' + word + ' '));
}

void StandIn::forget()
{
    events();
    received.clear();
}
