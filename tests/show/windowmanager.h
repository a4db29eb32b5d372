// SPDX-License-Identifier: MIT
#pragma once

#include "servers.h"

// openbox on the display that DISPLAY names, if it is wanted; gone with the object.
class WindowManager
{
public:
    // Returns when windows are managed. One that is shown before then may get lost.
    explicit WindowManager(bool isWanted);
    ~WindowManager();
    Q_DISABLE_COPY_MOVE(WindowManager)

    void kill(); // As a crash would: SIGKILL.

    bool isMissing = false; // Wanted, but not installed, or of no use.

private:
    ServerProcess process;
};
