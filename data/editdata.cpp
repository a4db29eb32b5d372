// SPDX-License-Identifier: MIT
#include "editdata.h"
