// SPDX-License-Identifier: MIT
#pragma once

// The calls of macOS that the key sender is written against: the Process Manager, Core Foundation
// strings and Quartz events. On macOS the system declares and provides them. Elsewhere this header
// declares the same names with the same signatures, and whoever links the sender links a provider:
// velt_platform does it over X11, velt_platform_recording only records for tests.
//
// What a provider keeps to, beyond the system's own documentation:
// - A process is an application that owns a window. Its ProcessSerialNumber stays valid after the
//   process has quit, and never comes to mean another process.
// - Events reach the process whether or not it has the focus. An event that cannot be delivered is
//   lost without a report; no call ends the program.
// - All calls come from one thread.

#ifdef __APPLE__

#include <ApplicationServices/ApplicationServices.h>

#else

#include "maccalls.h"

#endif

// What every provider has beside these calls, on macOS too.

// Blocks the calling thread for at least this many microseconds.
void platformPause(unsigned int microseconds);

// Whether key events of this program can reach others at all: on macOS the user has to allow it
// (Privacy & Security, Accessibility), over X11 a server has to answer. Does not ask the user.
bool mayPostEvents();
