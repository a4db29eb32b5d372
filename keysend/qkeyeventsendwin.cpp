// SPDX-License-Identifier: MIT
#include "qkeyeventsendwin.h"

void QKeyEventSendWin::init()
{
}

void QKeyEventSendWin::sendKeyEvent(int, unsigned char, bool)
{
}
