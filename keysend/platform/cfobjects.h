// SPDX-License-Identifier: MIT
#pragma once

#include "macevents.h"

#include <QString>

#include <cstddef>

// The strings and key events that the providers hand out outside macOS, with the calls that need
// nothing else: CFRelease, CFStringGet..., CGEventCreateKeyboardEvent, CGEventSetFlags. An object
// lives until it is released, once; releasing or reading it later is an error.

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own names.
struct __CFString
{
    QString text;
};

struct __CGEvent
{
    CGKeyCode key;
    bool isDown;
    CGEventFlags flags; // 0 as created.
};
// NOLINTEND(bugprone-reserved-identifier)

CFStringRef createString(const QString& text);
// How many objects are alive, for tests.
std::size_t unreleasedObjects();
