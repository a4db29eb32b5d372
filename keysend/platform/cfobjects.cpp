// SPDX-License-Identifier: MIT
#include "cfobjects.h"

#include <cstring>
#include <memory>
#include <unordered_map>

namespace {

std::unordered_map<CFTypeRef, std::shared_ptr<void>>& objects()
{
    static std::unordered_map<CFTypeRef, std::shared_ptr<void>> unreleased;
    return unreleased;
}

template <class T>
T* create(const T& value)
{
    const auto object = std::make_shared<T>(value);
    objects().emplace(object.get(), object);
    return object.get();
}

} // namespace

CFStringRef createString(const QString& text)
{
    return create(__CFString{text});
}

int unreleasedObjects()
{
    return static_cast<int>(objects().size());
}

void CFRelease(CFTypeRef object)
{
    objects().erase(object);
}

CFIndex CFStringGetLength(CFStringRef string)
{
    return string->text.size();
}

CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding)
{
    return 3 * length;
}

Boolean CFStringGetCString(CFStringRef string, char* buffer, CFIndex bufferSize, CFStringEncoding)
{
    const QByteArray utf8 = string->text.toUtf8();
    if (utf8.size() >= bufferSize) {
        return 0;
    }
    std::memcpy(buffer, utf8.constData(), static_cast<std::size_t>(utf8.size()) + 1);
    return 1;
}

CGEventRef CGEventCreateKeyboardEvent(CGEventSourceRef, CGKeyCode key, bool isDown)
{
    return create(__CGEvent{key, isDown, CGEventFlags()});
}

void CGEventSetFlags(CGEventRef event, CGEventFlags flags)
{
    event->flags = flags;
}
