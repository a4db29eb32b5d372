// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"

#include <QStringList>

// The stand-in DAW, a separate process on the display of this process, with MIDI ports if a MIDI
// server is there. Its window is shown when the constructor returns.
class StandIn : public Server
{
public:
    // Names under which its ports appear.
    static const QString kMmcPort;
    static const QString kNotesPort;
    static const QString kFootSwitchPort;

    explicit StandIn(const QString& name = QStringLiteral("Pro Tools"));
    explicit StandIn(const QStringList& arguments);

    void press(const QString& commands); // One a line.
    // Types into its window, which need not have the focus: "ctrl+t KP_3".
    static void type(const QString& keys);
    void closeInput() { process.closeWriteChannel(); }
    bool endsInOrder(int signal = 0); // Waits for it, after a signal other than 0.

    const QStringList& events();            // Reported so far, one a line.
    QStringList texts(const QString& word); // Of events that begin with the word.
    int count(const QString& event) { return static_cast<int>(events().count(event)); }
    bool has(const QString& event) { return events().contains(event); }
    void forget(); // Events so far.

private:
    QByteArray unread;
    QStringList received;
};
