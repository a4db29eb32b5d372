// SPDX-License-Identifier: MIT
#pragma once

// Posts key down and, 30 ms later, key up of a macOS virtual key code to the process in slot `pos`
// (filled; the caller has checked) of QKeyEventSendMac's table. With isCmd exactly 1 both events
// carry the Command flag, else the flags they were created with. Blocks the calling thread.
void pressKey(int pos, unsigned char key, int isCmd);
