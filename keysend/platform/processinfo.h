// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <sys/types.h>

// What /proc tells of a process that owns a window. Linux only, any thread.

// The time at which the process started, in clock ticks since boot; 0 if it has gone. A later
// process with the same id started later.
quint64 processStartTime(pid_t pid);

// What the process is called, in UTF-8: the name it gave itself, else that of its program file,
// without the ".exe" of Windows programs; empty if it has gone. The kernel keeps only 15 bytes of a
// name; a longer one is completed from the command line or the program file if these begin with it.
QByteArray processName(pid_t pid);
