// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>
#include <QTest>

// Any program of a test; killed with the object.
class Program
{
public:
    Program(const QString& file, const QStringList& arguments)
    {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(file, arguments);
    }
    ~Program() { kill(); }
    Q_DISABLE_COPY_MOVE(Program)

    void kill()
    {
        process.kill();
        process.waitForFinished();
    }
    QProcess process;
};

// A stand-in application on the display of the environment, its window active when it is
// constructed.
class Receiver : public Program
{
public:
    explicit Receiver(const QString& name, const QString& file = QStringLiteral(KEYRECEIVER))
        : Program(file, {name, QStringLiteral("-platform"), QStringLiteral("xcb")})
    {
        if (activeWindow() == 0) {
            qFatal("the receiver does not become active");
        }
    }

    QStringList read()
    {
        while (process.canReadLine()) {
            lines.append(QString::fromUtf8(process.readLine().trimmed()));
        }
        return lines;
    }
    // The keys that came so far, once `count` of them are there.
    QStringList keys(int count)
    {
        const auto keyLines = [this] { return read().filter(QStringLiteral("keysym")); };
        return QTest::qWaitFor([&] { return keyLines().size() >= count; })
                   ? keyLines()
                   : QStringList{QStringLiteral("late")} + keyLines();
    }
    bool command(const QString& what)
    {
        const auto done = [this] { return read().count(QStringLiteral("done")); };
        const int before = done();
        process.write(what.toLatin1() + '\n');
        return QTest::qWaitFor([&] { return done() > before; });
    }
    // Which window became active as the last, when `count` of them have.
    unsigned int activeWindow(int count = 1)
    {
        const auto active = [this] { return read().filter(QStringLiteral("active")); };
        return QTest::qWaitFor([&] { return active().size() >= count; }, 20000)
                   ? active().constLast().section(QLatin1Char(' '), 1).toUInt()
                   : 0;
    }

private:
    QStringList lines;
};

// Which two lines a receiver writes for a key.
inline QStringList pressed(unsigned int keysym, int modifiers)
{
    const QString line = QStringLiteral("%1 keysym %2 modifiers %3");
    return {line.arg(QStringLiteral("press")).arg(keysym, 0, 16).arg(modifiers, 0, 16),
            line.arg(QStringLiteral("release")).arg(keysym, 0, 16).arg(modifiers, 0, 16)};
}
