// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QObject>
#include <QProcess>

class RehearsalPorts;
class QScreen;

// A rehearsal in one step: starts VELT as a separate process, set up with the sample show and the
// stand-in's ports. Its settings lie apart from the user's (settingsFolder()), and what is edited
// there is kept for the next rehearsal.
//
// Made after the application object. While VELT is open, closing the stand-in's window ends neither
// the application nor VELT, whose editor may hold unsaved text. Quitting the application quits
// VELT.
class Practice : public QObject
{
    Q_OBJECT

public:
    // Where VELT's window is put on a screen; the stand-in's is put to the right of it.
    static QRect veltGeometry(const QScreen& screen);
    // "velt-rehearsal" in the user's configuration folder.
    static QString settingsFolder();

    ~Practice() override;

    void start(Daw daw, const RehearsalPorts& ports, const QScreen& screen);

signals:
    void failed(const QString& why); // VELT cannot be started, or has crashed.
    void ended();                    // The user has closed VELT.

private:
    QProcess velt;
};
