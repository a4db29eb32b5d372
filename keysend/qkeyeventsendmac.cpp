// SPDX-License-Identifier: MIT
#include "qkeyeventsendmac.h"

#include <cstring>

namespace {

constexpr CFIndex kNameBufferBytes = 255;   // With the terminating zero.
constexpr CFIndex kLongestNameBytes = 1024; // Of a file: 255 UTF-16 units.
constexpr unsigned int kKeyHoldUs = 30000;

// Writes the name into `slot`, if too long cut at the start of a UTF-8 character; false if the name
// has no UTF-8 form.
bool storeName(CFStringRef name, char* slot)
{
    if (CFStringGetCString(name, slot, kNameBufferBytes, kCFStringEncodingUTF8)) {
        return true;
    }
    char whole[kLongestNameBytes];
    if (!CFStringGetCString(name, whole, sizeof whole, kCFStringEncodingUTF8)) {
        return false;
    }
    std::size_t length = kNameBufferBytes - 1;
    while ((static_cast<unsigned char>(whole[length]) & 0xc0U) == 0x80U) {
        --length;
    }
    std::memcpy(slot, whole, length);
    slot[length] = '\0';
    return true;
}

void postEvent(ProcessSerialNumber process, unsigned char key, bool isDown, int isCmd)
{
    CGEventRef event = CGEventCreateKeyboardEvent(nullptr, key, isDown);
    if (!event) {
        return;
    }
    if (isCmd == 1) {
        CGEventSetFlags(event, kCGEventFlagMaskCommand);
    }
    CGEventPostToPSN(&process, event);
    CFRelease(event);
}

} // namespace

char QKeyEventSendMac::cProcNameArray[kSlots][kSlotBytes];
ProcessSerialNumber QKeyEventSendMac::psnArray[kSlots];
int QKeyEventSendMac::iProcCount = 0;

void QKeyEventSendMac::setProcessName()
{
    iProcCount = 0;
    ProcessSerialNumber own = {0, kNoProcess};
    GetCurrentProcess(&own);

    ProcessSerialNumber process = {0, kNoProcess};
    while (iProcCount < kSlots && GetNextProcess(&process) == noErr) {
        Boolean isOwn = 0;
        CFStringRef name = nullptr;
        if ((SameProcess(&process, &own, &isOwn) == noErr && isOwn) ||
            CopyProcessName(&process, &name) != noErr) {
            continue;
        }
        if (storeName(name, cProcNameArray[iProcCount])) {
            psnArray[iProcCount] = process;
            ++iProcCount;
        }
        CFRelease(name);
    }
}

void QKeyEventSendMac::sendKeyEvent(int pos, unsigned char key, int isCmd)
{
    if (pos < 0 || pos >= iProcCount) {
        return;
    }
#ifdef __APPLE__
    sendKeyByProxy(pos, key, isCmd);
#else
    pressKey(pos, key, isCmd);
#endif
}

void QKeyEventSendMac::pressKey(int pos, unsigned char key, int isCmd)
{
    postEvent(psnArray[pos], key, true, isCmd);
    platformPause(kKeyHoldUs);
    postEvent(psnArray[pos], key, false, isCmd);
}
