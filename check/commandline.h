// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

// What the command line asks for instead of the window (--check, --help, --version, or an error):
// does that, without a display, and returns the exit status: 0, 1 if the check found a problem, 2
// for an error in the command line. Nothing if the window is to open. Call it before an
// application object is made.
std::optional<int> runCommandLine(int argc, char** argv);
