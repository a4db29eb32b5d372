// SPDX-License-Identifier: MIT
#pragma once

#include "macevents.h"

#include <QByteArray>

// The strings and key events of the providers outside macOS, with the calls that make, read and
// release them.

struct CFObject
{
    CFObject() { ++unreleased; }
    virtual ~CFObject() { --unreleased; }
    Q_DISABLE_COPY_MOVE(CFObject)

    static int unreleased; // For tests.
};

// NOLINTBEGIN(bugprone-reserved-identifier): the platform's own names.
struct __CFString : CFObject
{
    explicit __CFString(const QByteArray& text) : utf8(text) {}

    QByteArray utf8;
};

struct __CGEvent : CFObject
{
    CGKeyCode key = 0;
    bool isDown = false;
    CGEventFlags flags = {};
};
// NOLINTEND(bugprone-reserved-identifier)
