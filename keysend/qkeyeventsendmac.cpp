// SPDX-License-Identifier: MIT
#include "qkeyeventsendmac.h"

#include "qkeyeventsendmacproxy.h"

#include <cstring>
#include <vector>

namespace {

constexpr CFIndex kNameBufferBytes = 255; // With the terminating zero.

// The length of the longest run of whole UTF-8 characters at the start of `text` that fits.
std::size_t wholeCharacters(const char* text, std::size_t maxBytes)
{
    std::size_t length = maxBytes;
    while (length > 0 && (static_cast<unsigned char>(text[length]) & 0xc0U) == 0x80U) {
        --length;
    }
    return length;
}

// Writes the name into `slot`, cut if need be; false if it has no UTF-8 form.
bool storeName(CFStringRef name, char* slot)
{
    if (CFStringGetCString(name, slot, kNameBufferBytes, kCFStringEncodingUTF8)) {
        return true;
    }
    const CFIndex bytes =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(name), kCFStringEncodingUTF8) + 1;
    std::vector<char> whole(static_cast<std::size_t>(bytes));
    if (!CFStringGetCString(name, whole.data(), bytes, kCFStringEncodingUTF8)) {
        return false;
    }
    const std::size_t length = wholeCharacters(whole.data(), kNameBufferBytes - 1);
    std::memcpy(slot, whole.data(), length);
    slot[length] = '\0';
    return true;
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
    if (pos >= 0 && pos < iProcCount) {
        sendKeyByProxy(pos, key, isCmd);
    }
}
