// SPDX-License-Identifier: MIT
#pragma once

#include <QProcess>

// openbox on the display of this process, if it is wanted; gone with the object.
class WindowManager
{
public:
    explicit WindowManager(bool isWanted)
    {
        if (isWanted) {
            process.start("openbox", {"--sm-disable"});
            isMissing = !process.waitForStarted();
        }
    }
    ~WindowManager()
    {
        process.terminate();
        process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(WindowManager)

    bool isMissing = false; // Wanted, but not installed.

private:
    QProcess process;
};
