// SPDX-License-Identifier: MIT
#pragma once

// Lets Qt scale by the display's real factor, such as 1.5 at 144 dpi, instead of a rounded one.
// Call before the application object is made.
//
// Where the desktop has set no resolution, Qt computes it from the display's size in millimetres,
// which is rounded: a factor that is 1 but for that, within 2 %, stays 1, as scaled painting takes
// three times as long.
void useRealDisplayScale();
