// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"

#include <QStringList>
#include <QVector>

// A stand-in DAW in a process of its own, on the display of this process, with MIDI ports if a MIDI
// server is there. Gone with the object.
class StandIn
{
public:
    struct Event
    {
        double ms; // CLOCK_MONOTONIC
        QString text;
    };

    // Names under which its ports appear.
    static const QString kMmcPort;
    static const QString kNotesPort;
    static const QString kFootSwitchPort;

    explicit StandIn(const QString& name);
    ~StandIn();
    Q_DISABLE_COPY_MOVE(StandIn)

    bool isReady(); // Waits until it is.
    void press(const QString& command);
    void kill();
    void suspend(bool stopped);

    // All that it has reported so far, and what of it begins with one of the words.
    const QVector<Event>& events();
    QStringList texts(const QStringList& words);
    int count(const QString& text);
    void forget(); // Events so far.

private:
    ServerProcess process;
    QByteArray unread;
    QVector<Event> received;
};
