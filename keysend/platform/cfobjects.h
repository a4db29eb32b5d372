// SPDX-License-Identifier: MIT
#pragma once

#include "macevents.h"

#include <QString>

// The strings and key events of the providers outside macOS. Implements CFRelease,
// CFStringGet..., CGEventCreateKeyboardEvent and CGEventSetFlags. An object lives until it is
// released.

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
// The number of objects that are not released, for tests.
int unreleasedObjects();
