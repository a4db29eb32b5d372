// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

// Set-up of this process: standard streams, name, standard input.

// Makes sure that descriptors 0 to 2 exist, so that no other file gets the number of a standard
// stream that the parent closed. Ignores SIGPIPE and the stop signals of a terminal in whose
// background the program runs. First call in main().
void prepareStandardStreams();

// Gives the main thread, and so the process, this name (at most 15 bytes). Call it on the main
// thread before other threads start. False: the name was not set.
bool takeProcessName(const QByteArray& name);

// Reads lines from a descriptor without blocking the event loop. At its end, or after an error,
// emits no more lines.
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
