// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"

// Shows of `entriesPerShow` entries each, `entries` in all, of a library a tenth as large.
EditData showsOf(int entries, int entriesPerShow = 100);
