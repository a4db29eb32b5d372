// SPDX-License-Identifier: MIT
#include "recordingplatform.h"

#include "cfobjects.h"

#include <utility>

namespace {

QVector<Recording::Application> running;
UInt32 list = 0; // The number of the list, in every handle of it.
Recording::Events events;
int enumerationCount = 0;

int indexOf(const ProcessSerialNumber& process)
{
    return process.highLongOfPSN == list ? static_cast<int>(process.lowLongOfPSN) - 1
                                         : Recording::kGone;
}

ProcessSerialNumber handle(int index)
{
    return {list, static_cast<UInt32>(index + 1)};
}

QString keyEvent(bool isDown, int application, int key, quint64 flags)
{
    return QStringLiteral("0x%1 %2 to %3%4")
        .arg(key, 2, 16, QLatin1Char('0'))
        .arg(isDown ? QStringLiteral("down") : QStringLiteral("up"))
        .arg(application)
        .arg(flags == Recording::kCommand ? QStringLiteral(" with Command")
             : flags                      ? QStringLiteral(" with flags %1").arg(flags)
                                          : QString());
}

} // namespace

namespace Recording {

void reset()
{
    setApplications({});
    events.clear();
    enumerationCount = 0;
}

void setApplications(const QVector<Application>& applications)
{
    ++list;
    running = applications;
}

Events takeEvents()
{
    return std::exchange(events, {});
}

int enumerations()
{
    return enumerationCount;
}

int unreleased()
{
    return CFObject::unreleased;
}

QString pause(unsigned int microseconds)
{
    return QStringLiteral("%1 us").arg(microseconds);
}

Events press(int application, int key, quint64 flags)
{
    return {keyEvent(true, application, key, flags), pause(30000),
            keyEvent(false, application, key, flags), pause(100000)};
}

Events presses(int application, const QVector<int>& keys)
{
    Events expected;
    for (const int code : keys) {
        expected += press(application, code);
    }
    return expected;
}

} // namespace Recording

OSErr GetCurrentProcess(ProcessSerialNumber* process)
{
    int own = 0;
    while (own < running.size() && running[own].kind != Recording::Application::Own) {
        ++own;
    }
    *process = handle(own);
    return noErr;
}

OSErr GetNextProcess(ProcessSerialNumber* process)
{
    const bool isFirst = process->lowLongOfPSN == kNoProcess;
    enumerationCount += isFirst ? 1 : 0;
    const int next = isFirst ? 0 : indexOf(*process) + 1;
    *process = handle(next);
    return next < running.size() ? OSErr(noErr) : OSErr(procNotFound);
}

OSErr SameProcess(const ProcessSerialNumber* one, const ProcessSerialNumber* other, Boolean* result)
{
    *result = one->lowLongOfPSN == other->lowLongOfPSN;
    return noErr;
}

OSStatus CopyProcessName(const ProcessSerialNumber* process, CFStringRef* name)
{
    const auto& application = running[indexOf(*process)];
    if (application.kind == Recording::Application::Nameless) {
        return procNotFound;
    }
    *name = new __CFString(application.name);
    return noErr;
}

void CGEventPostToPSN(void* process, CGEventRef event)
{
    const int application = indexOf(*static_cast<ProcessSerialNumber*>(process));
    events.append(keyEvent(event->isDown, application, event->key, event->flags));
}

void platformPause(unsigned int microseconds)
{
    events.append(Recording::pause(microseconds));
}

bool mayPostEvents()
{
    return true;
}
