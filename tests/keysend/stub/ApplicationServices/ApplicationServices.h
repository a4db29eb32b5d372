// SPDX-License-Identifier: MIT
#pragma once

// In place of macOS's header.
#include "maccalls.h"
