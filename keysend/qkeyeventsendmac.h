// SPDX-License-Identifier: MIT
#pragma once

#include "macevents.h"

// The back end of QKeyEventSend: keeps the table of running applications and sends keys to its
// slots. It is one source for macOS and for every system whose platform layer provides the same
// calls (macevents.h). The table is static, shared by all instances and not locked: main thread
// only.
class QKeyEventSendMac
{
public:
    // Fills the table with the running applications in the platform's order, without the calling
    // process itself. At most 256 are listed. An application whose name is not available is left
    // out; a name of more than 254 bytes is cut after its last whole character that fits.
    void setProcessName();

    [[nodiscard]] int getProcNameCount() const { return iProcCount; }
    // The name in slot i, 0 to getProcNameCount() - 1, as zero-terminated UTF-8.
    [[nodiscard]] const char* getProcName(int i) const { return cProcNameArray[i]; }

    // Presses and releases the key of this macOS virtual key code in the process of slot `pos`,
    // with the Command modifier if isCmd is 1; takes 30 ms. A slot that is not filled gets nothing.
    void sendKeyEvent(int pos, unsigned char key, int isCmd);

    // The work of sendKeyEvent() for a filled slot. On macOS the class QKeyEventSendMacProxy calls
    // it.
    static void pressKey(int pos, unsigned char key, int isCmd);

private:
    static constexpr int kSlots = 256;
    static constexpr int kSlotBytes = 256;

    static char cProcNameArray[kSlots][kSlotBytes];
    static ProcessSerialNumber psnArray[kSlots];
    static int iProcCount;
};

#ifdef __APPLE__
// Sends the key through an object of QKeyEventSendMacProxy (qkeyeventsendmacproxy.mm).
void sendKeyByProxy(int pos, unsigned char key, int isCmd);
#endif
