// SPDX-License-Identifier: MIT
#include "macevents.h"

bool mayPostEvents()
{
#ifdef __APPLE__
    return CGPreflightPostEventAccess();
#else
    return true;
#endif
}
