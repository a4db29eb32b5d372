// SPDX-License-Identifier: MIT
#include "standin.h"

#include "desktop.h"

#include <QTest>

#include <csignal>

const QString StandIn::kMmcPort = QStringLiteral("Rehearsal MMC:commands");
const QString StandIn::kNotesPort = QStringLiteral("Rehearsal DAW:notes");
const QString StandIn::kFootSwitchPort = QStringLiteral("Rehearsal Foot switch:notes");

StandIn::StandIn(const QString& name) : StandIn(QStringList{name})
{
}

StandIn::StandIn(const QStringList& arguments)
{
    process.setStandardErrorFile(QProcess::nullDevice());
    start(QStringLiteral(VELT_REHEARSAL), arguments,
          [this] { return has(QStringLiteral("ready")); });
    forget();
}

void StandIn::press(const QString& commands)
{
    process.write(commands.toUtf8() + '\n');
    process.waitForBytesWritten();
}

void StandIn::type(const QString& keys)
{
    const QString search =
        QStringLiteral("search --onlyvisible --name ^(Pro.Tools|Studio.One)$ key --delay 20 ");
    Desktop::xdotool((search + keys).split(QLatin1Char(' ')));
}

bool StandIn::endsInOrder(int signal)
{
    if (signal != 0) {
        ::kill(static_cast<pid_t>(process.processId()), signal);
    }
    return process.waitForFinished() && process.exitStatus() == QProcess::NormalExit &&
           process.exitCode() == 0;
}

const QVector<StandIn::Event>& StandIn::events()
{
    unread += process.readAllStandardOutput();
    for (int end = unread.indexOf('\n'); end != -1; end = unread.indexOf('\n')) {
        const QString line = QString::fromUtf8(unread.left(end));
        unread.remove(0, end + 1);
        received.append(
            {line.section(QLatin1Char(' '), 0, 0).toDouble(), line.section(QLatin1Char(' '), 1)});
    }
    return received;
}

QStringList StandIn::texts(const QStringList& words)
{
    QStringList found;
    for (const Event& event : events()) {
        if (words.contains(event.text.section(QLatin1Char(' '), 0, 0))) {
            found << event.text;
        }
    }
    return found;
}

QStringList StandIn::results()
{
    QStringList found;
    for (const Event& event : events()) {
        if (!event.text.startsWith(QLatin1String("key "))) {
            found << event.text;
        }
    }
    return found;
}

int StandIn::count(const QString& text)
{
    const QVector<Event>& all = events();
    return int(std::count_if(all.begin(), all.end(),
                             [&text](const Event& event) { return event.text == text; }));
}

void StandIn::forget()
{
    events();
    received.clear();
}
