// SPDX-License-Identifier: MIT
#include "recordingplatform.h"

#include "cfobjects.h"

#include <utility>

namespace {

struct State
{
    QVector<Recording::Application> applications;
    Recording::Events events;
    int enumerations = 0;
};

State& state()
{
    static State value;
    return value;
}

// The handle of the first application. Grows with every list, so that handles of earlier lists
// differ.
UInt32 firstHandle = 1;

int indexOf(const ProcessSerialNumber& process)
{
    const UInt32 index = process.lowLongOfPSN - firstHandle; // Wraps for earlier handles.
    return index < static_cast<UInt32>(state().applications.size()) ? static_cast<int>(index)
                                                                    : Recording::kGone;
}

ProcessSerialNumber handle(int index)
{
    return {0, firstHandle + static_cast<UInt32>(index)};
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

Application::Application(const char* utf8Name, Kind theKind)
    : name(QString::fromUtf8(utf8Name)), kind(theKind)
{
}

void reset()
{
    setApplications({});
    state() = State();
}

void setApplications(const QVector<Application>& applications)
{
    firstHandle += static_cast<UInt32>(state().applications.size());
    state().applications = applications;
}

Events takeEvents()
{
    return std::exchange(state().events, {});
}

int enumerations()
{
    return state().enumerations;
}

int unreleased()
{
    return unreleasedObjects();
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
    Events events;
    for (const int code : keys) {
        events += press(application, code);
    }
    return events;
}

} // namespace Recording

OSErr GetCurrentProcess(ProcessSerialNumber* process)
{
    const auto& applications = state().applications;
    for (int i = 0; i < applications.size(); ++i) {
        if (applications[i].kind == Recording::Application::Own) {
            *process = handle(i);
            return noErr;
        }
    }
    return procNotFound;
}

OSErr GetNextProcess(ProcessSerialNumber* process)
{
    const bool isFirst = process->lowLongOfPSN == kNoProcess;
    if (isFirst) {
        ++state().enumerations;
    }
    const int next = isFirst ? 0 : indexOf(*process) + 1;
    if (next >= state().applications.size()) {
        return procNotFound;
    }
    *process = handle(next);
    return noErr;
}

OSErr SameProcess(const ProcessSerialNumber* one, const ProcessSerialNumber* other, Boolean* result)
{
    *result = one->lowLongOfPSN == other->lowLongOfPSN;
    return noErr;
}

OSStatus CopyProcessName(const ProcessSerialNumber* process, CFStringRef* name)
{
    const int index = indexOf(*process);
    if (index < 0 || state().applications[index].kind == Recording::Application::Nameless) {
        return procNotFound;
    }
    *name = createString(state().applications[index].name);
    return noErr;
}

void CGEventPostToPSN(void* process, CGEventRef event)
{
    state().events.append(keyEvent(event->isDown,
                                   indexOf(*static_cast<ProcessSerialNumber*>(process)), event->key,
                                   event->flags));
}

void platformPause(unsigned int microseconds)
{
    state().events.append(Recording::pause(microseconds));
}
