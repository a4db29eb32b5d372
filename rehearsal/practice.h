// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QObject>
#include <QProcess>

class MidiPorts;
class QScreen;

// A rehearsal in one step: VELT in a process of its own beside the stand-in, set up for it. VELT
// finds the sample show there and the stand-in's ports; its settings lie apart from the user's own
// (settingsFolder()), and what is edited there is kept for the next rehearsal.
//
// Made after the application object. While VELT is open, closing the stand-in's window does not end
// the application, and so not VELT: something may be typed into its editor. Only when the
// application is told to quit, VELT is too.
class Practice : public QObject
{
    Q_OBJECT

public:
    // Where VELT's window goes on a screen; the stand-in may have what is right of it.
    static QRect veltGeometry(const QScreen& screen);
    // "velt-rehearsal" in the user's configuration folder.
    static QString settingsFolder();

    ~Practice() override;

    void start(Daw daw, const MidiPorts& ports, const QScreen& screen);

signals:
    void failed(const QString& why); // VELT cannot be started, or has crashed.
    void ended();                    // The user has closed VELT.

private:
    QProcess velt;
};
