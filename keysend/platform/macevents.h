// SPDX-License-Identifier: MIT
#pragma once

// The calls of macOS that the key sender is written against: the Process Manager, Core Foundation
// strings and Quartz events. On macOS the system declares and provides them. Elsewhere this header
// declares the same names with the same signatures, and whoever links the sender links a provider:
// velt_platform does it over X11, velt_platform_recording only records for tests.
//
// What a provider keeps to, beyond the system's own documentation:
// - A process is an application that owns a window. Its ProcessSerialNumber stays valid after the
//   process has quit, and never comes to mean another process.
// - Events reach the process whether or not it has the focus. An event that cannot be delivered is
//   lost without a report; no call ends the program.
// - All calls come from one thread.

#ifdef __APPLE__

#include <ApplicationServices/ApplicationServices.h>

#else

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
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming,modernize-use-using)

} // extern "C"

#endif

// Blocks the calling thread for at least so many microseconds. Every provider has it, on macOS too.
void platformPause(unsigned int microseconds);
