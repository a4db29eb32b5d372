// SPDX-License-Identifier: MIT
#include "cfobjects.h"

#include <cstring>
#include <memory>
#include <unordered_map>
#include <utility>
#include <variant>

namespace {

using Object = std::variant<__CFString, __CGEvent>;

std::unordered_map<CFTypeRef, std::unique_ptr<Object>>& objects()
{
    static std::unordered_map<CFTypeRef, std::unique_ptr<Object>> living;
    return living;
}

template <class T>
T* create(T value)
{
    auto object = std::make_unique<Object>(std::move(value));
    T* const handle = std::get_if<T>(object.get());
    objects().emplace(handle, std::move(object));
    return handle;
}

} // namespace

CFStringRef createString(const QString& text)
{
    return create(__CFString{text});
}

std::size_t unreleasedObjects()
{
    return objects().size();
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
