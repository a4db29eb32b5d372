// SPDX-License-Identifier: MIT
#include "macevents.h"

bool mayPostEvents()
{
    return CGPreflightPostEventAccess();
}
