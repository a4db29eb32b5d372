// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QString>

#include <optional>

// The name under which the workstation's process is known.
QString dawName(Daw daw);
std::optional<Daw> dawOfName(const QString& name);

// How the program is called, what it reads and what it writes.
QString usageText();
