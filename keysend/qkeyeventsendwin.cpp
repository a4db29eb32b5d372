// SPDX-License-Identifier: MIT
#include "qkeyeventsendwin.h"
