// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

// What the program does with its own process.

// Makes sure that descriptors 0 to 2 exist, so that nothing else is opened under the number of a
// standard stream that the parent closed. A reader that goes away, and a terminal that this
// program is in the background of, must not end or stop it either. First thing in main().
void settleStandardStreams();

// Gives the main thread, and so the process, this name (at most 15 bytes). Call it on the main
// thread before others start. False: the name is not in force.
bool takeProcessName(const QByteArray& name);

// Turns SIGINT, SIGTERM and SIGHUP into an orderly QCoreApplication::quit(). One instance, made
// after the application object.
class QuitOnSignals : public QObject
{
    Q_OBJECT

public:
    QuitOnSignals();
};

// Reads lines from a descriptor without ever blocking the event loop. At its end, or when it
// cannot be read, it falls silent.
class LineReader : public QObject
{
    Q_OBJECT

public:
    explicit LineReader(int readFrom);

signals:
    void lineRead(const QString& line); // Without white space at its ends; never empty.

private:
    void readSome();

    int descriptor;
    QSocketNotifier notifier;
    QByteArray pending;
};
