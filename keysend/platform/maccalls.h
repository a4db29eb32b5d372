// SPDX-License-Identifier: MIT
#pragma once

// What of macOS's ApplicationServices the key sender uses, declared for other systems, and for
// checking there that the sources for macOS compile.

#include <cstdint>

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming,modernize-use-using): the
// platform's own names.
using Boolean = unsigned char;
using UInt32 = std::uint32_t;
using OSErr = std::int16_t;
using OSStatus = std::int32_t;
enum { noErr = 0, procNotFound = -600 };

using CFIndex = long;
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;
using CFStringEncoding = std::uint32_t;
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

void CFRelease(CFTypeRef object);
Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize,
                           CFStringEncoding encoding);

struct ProcessSerialNumber
{
    UInt32 highLongOfPSN;
    UInt32 lowLongOfPSN;
};
enum { kNoProcess = 0 };

OSErr GetCurrentProcess(ProcessSerialNumber* process);
OSErr GetNextProcess(ProcessSerialNumber* process);
OSErr SameProcess(const ProcessSerialNumber* one, const ProcessSerialNumber* other,
                  Boolean* result);
OSStatus CopyProcessName(const ProcessSerialNumber* process, CFStringRef* name);

using CGKeyCode = std::uint16_t;
using CGEventRef = struct __CGEvent*;
using CGEventSourceRef = struct __CGEventSource*;
enum CGEventFlags : std::uint64_t { kCGEventFlagMaskCommand = 0x100000 };

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef source, CGKeyCode key, bool isDown);
void CGEventSetFlags(CGEventRef event, CGEventFlags flags);
void CGEventPostToPSN(void* process, CGEventRef event);
bool CGPreflightPostEventAccess();
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming,modernize-use-using)

} // extern "C"
