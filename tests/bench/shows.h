// SPDX-License-Identifier: MIT
#pragma once

#include "editdata.h"

// So many entries altogether, in shows of so many each, of a library a tenth as large.
EditData showsOf(int entries, int entriesPerShow = 100);
