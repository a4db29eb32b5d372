// SPDX-License-Identifier: MIT
#include "qkeyeventsendmacproxy.h"

#include "keypress.h"

namespace {

class QKeyEventSendMacProxy
{
public:
    void sendKeyEvent(int pos, unsigned char key, int isCmd) { pressKey(pos, key, isCmd); }
};

} // namespace

void sendKeyByProxy(int pos, unsigned char key, int isCmd)
{
    QKeyEventSendMacProxy().sendKeyEvent(pos, key, isCmd);
}
