// SPDX-License-Identifier: MIT
#include "desktop.h"

#include <QProcess>
#include <QTest>
#include <QWidget>

namespace {

QString run(const QStringList& arguments, bool mayFail)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), arguments);
    const bool hasEnded = process.waitForFinished();
    if (!hasEnded || (process.exitCode() != 0 && !mayFail)) {
        QTest::qFail(qPrintable(QStringLiteral("xdotool ") + arguments.join(QLatin1Char(' '))),
                     __FILE__, __LINE__);
    }
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

} // namespace

QString Desktop::xdotool(const QStringList& arguments)
{
    return run(arguments, false);
}

void Desktop::key(const QString& keys)
{
    xdotool(QStringList{QStringLiteral("key")} + keys.split(QLatin1Char(' ')));
}

void Desktop::click(const QWidget* widget, QPoint at, int times)
{
    const QPoint place = widget->mapToGlobal(at);
    xdotool({QStringLiteral("mousemove"), QString::number(place.x()), QString::number(place.y()),
             QStringLiteral("click"), QStringLiteral("--repeat"), QString::number(times),
             QStringLiteral("--delay"), QStringLiteral("50"), QStringLiteral("1")});
}

void Desktop::click(const QWidget* widget)
{
    click(widget, widget->rect().center());
}

QStringList Desktop::windows(const QString& title)
{
    return run({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                QLatin1Char('^') + title + QLatin1Char('$')},
               true) // Finding none is a failure to xdotool.
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}
