// SPDX-License-Identifier: MIT
#include "cfobjects.h"

int CFObject::unreleased = 0;

void CFRelease(CFTypeRef object)
{
    delete static_cast<const CFObject*>(object);
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding)
{
    const bool fits = string->utf8.size() < bufferSize;
    qstrncpy(buffer, string->utf8.constData(), fits ? static_cast<uint>(bufferSize) : 0);
    return fits;
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode key, bool isDown)
{
    auto* const event = new __CGEvent;
    event->key = key;
    event->isDown = isDown;
    return event;
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags)
{
    event->flags = flags;
}
