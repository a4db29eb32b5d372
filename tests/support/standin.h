// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"

#include <QStringList>
#include <QVector>

// The stand-in DAW, a process of its own on the display of this process, with MIDI ports if a MIDI
// server is there. Its window is shown when the constructor returns.
class StandIn : public Server
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

    explicit StandIn(const QString& name = QStringLiteral("Pro Tools"));
    explicit StandIn(const QStringList& arguments);

    bool isReady() const { return isRunning(); }
    void press(const QString& commands); // One a line.
    // Types into its window, which need not have the focus: "ctrl+t KP_3".
    static void type(const QString& keys);
    void closeInput() { process.closeWriteChannel(); }
    bool endsInOrder(int signal = 0); // Waits for it, after a signal other than 0.

    // All that it has reported so far, what of it begins with one of the words, and all but keys.
    const QVector<Event>& events();
    QStringList texts(const QStringList& words);
    QStringList results();
    int count(const QString& text);
    bool has(const QString& text) { return count(text) > 0; }
    void forget(); // Events so far.

private:
    QByteArray unread;
    QVector<Event> received;
};
