// SPDX-License-Identifier: MIT
#pragma once

// The declarations of macOS's ApplicationServices framework that the key sender uses, in the
// framework's own form, for checking elsewhere that the sources for macOS compile.

#include <cstdint>

extern "C" {

typedef unsigned char Boolean;
typedef std::uint32_t UInt32;
typedef std::int16_t OSErr;
typedef std::int32_t OSStatus;
enum { noErr = 0 };

typedef long CFIndex;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
typedef UInt32 CFStringEncoding;
enum CFStringBuiltInEncodings : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };
extern void CFRelease(CFTypeRef cf);
extern Boolean CFStringGetCString(CFStringRef theString, char* buffer, CFIndex bufferSize,
                                  CFStringEncoding encoding);

struct ProcessSerialNumber
{
    UInt32 highLongOfPSN;
    UInt32 lowLongOfPSN;
};
enum { kNoProcess = 0 };
extern OSErr GetCurrentProcess(ProcessSerialNumber* pPSN) __attribute__((deprecated));
extern OSErr GetNextProcess(ProcessSerialNumber* pPSN) __attribute__((deprecated));
extern OSErr SameProcess(const ProcessSerialNumber* pPSN1, const ProcessSerialNumber* pPSN2,
                         Boolean* pResult) __attribute__((deprecated));
extern OSStatus CopyProcessName(const ProcessSerialNumber* psn, CFStringRef* name)
    __attribute__((deprecated));

typedef std::uint16_t CGKeyCode;
typedef struct __CGEvent* CGEventRef;
typedef struct __CGEventSource* CGEventSourceRef;
enum CGEventFlags : std::uint64_t { kCGEventFlagMaskCommand = 0x00100000 };
extern CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode virtualKey,
                                             bool keyDown);
extern void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
extern void CGEventPostToPSN(void* processSerialNumber, CGEventRef event);

} // extern "C"
