// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QString>

#include <optional>

// The process name of the DAW.
QString dawName(Daw daw);
std::optional<Daw> dawOfName(const QString& name);

// Command line, input and output of the program, for the user.
QString usageText();
