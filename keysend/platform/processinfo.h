// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <sys/types.h>

// What /proc tells of a process that owns a window. Linux only, any thread.

// The time at which the process started, in clock ticks since boot; none if it has gone. A later
// process of the same number started later.
std::optional<quint64> processStartTime(pid_t pid);

// What the process is called: the name it gave itself, else that of its program file, without
// the ".exe" of Windows programs; none if it has gone. The kernel keeps 15 bytes of a name only;
// a longer one is completed from the command line or the program file where these begin with it.
std::optional<QString> processName(pid_t pid);
