// SPDX-License-Identifier: MIT
#include "desktop.h"

#include <QProcess>
#include <QTest>
#include <QWidget>

QString Desktop::xdotool(const QStringList& arguments, bool mayFail)
{
    QProcess process;
    process.start("xdotool", arguments);
    const bool hasEnded = process.waitForFinished();
    if (!hasEnded || (process.exitCode() != 0 && !mayFail)) {
        QTest::qFail(qPrintable("xdotool " + arguments.join(' ')), __FILE__, __LINE__);
    }
    return process.readAllStandardOutput().trimmed();
}

void Desktop::key(const QString& keys)
{
    xdotool(QStringList{"key"} + keys.split(' '));
}

void Desktop::click(const QWidget* widget, QPoint at, int times)
{
    const QPoint place = widget->mapToGlobal(at);
    xdotool({"mousemove", QString::number(place.x()), QString::number(place.y()), "click",
             "--repeat", QString::number(times), "--delay", "50", "1"});
}

QStringList Desktop::windows(const QString& title)
{
    // Finding none is a failure to xdotool.
    return xdotool({"search", "--onlyvisible", "--name", '^' + title + '$'}, true)
        .split('\n', Qt::SkipEmptyParts);
}
