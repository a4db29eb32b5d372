// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

// Turns SIGTERM, SIGINT and SIGHUP of the process into a signal on the main thread, so that the
// program can end in order. One instance, made after the application object. Where these signals do
// not exist, or no descriptors are left, it does nothing.
class QuitSignals : public QObject
{
    Q_OBJECT

public:
    QuitSignals();
    ~QuitSignals() override;
    Q_DISABLE_COPY_MOVE(QuitSignals)

signals:
    void quitRequested();
};
