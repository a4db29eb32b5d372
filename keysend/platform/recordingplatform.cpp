// SPDX-License-Identifier: MIT
#include "recordingplatform.h"

#include "cfobjects.h"

#include <QStringList>

#include <cstring>
#include <tuple>

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

// The handle of an application is this plus its index; it moves on with every list, for handles
// of earlier lists to stay apart.
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

QString describe(const Recording::Event& event)
{
    if (event.type == Recording::Event::Pause) {
        return QStringLiteral("%1 us").arg(event.microseconds);
    }
    const QLatin1String way(event.type == Recording::Event::KeyDown ? "down" : "up");
    QString text = QStringLiteral("0x%1 %2 to %3")
                       .arg(event.key, 2, 16, QLatin1Char('0'))
                       .arg(way)
                       .arg(event.application);
    if (event.flags == Recording::kCommand) {
        text += QLatin1String(" with Command");
    } else if (event.flags) {
        text += QStringLiteral(" with flags 0x%1").arg(event.flags, 0, 16);
    }
    return text;
}

} // namespace

namespace Recording {

Application::Application(const char* utf8Name, Kind theKind)
    : name(QString::fromUtf8(utf8Name)), kind(theKind)
{
}

bool Event::operator==(const Event& other) const
{
    return std::tie(type, application, key, flags, microseconds) ==
           std::tie(other.type, other.application, other.key, other.flags, other.microseconds);
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
    Events taken;
    taken.swap(state().events);
    return taken;
}

int enumerations()
{
    return state().enumerations;
}

int unreleased()
{
    return unreleasedObjects();
}

Event pause(unsigned int microseconds)
{
    Event event;
    event.microseconds = microseconds;
    return event;
}

Events press(int application, int key, quint64 flags)
{
    return {{Event::KeyDown, application, key, flags, 0},
            pause(30000),
            {Event::KeyUp, application, key, flags, 0},
            pause(100000)};
}

Events presses(int application, const QVector<int>& keys)
{
    Events events;
    for (const int code : keys) {
        events += press(application, code);
    }
    return events;
}

char* toString(const Event& event)
{
    return qstrdup(qPrintable(describe(event)));
}

char* toString(const Events& events)
{
    QStringList texts;
    for (const Event& event : events) {
        texts.append(describe(event));
    }
    return qstrdup(qPrintable(texts.join(QLatin1String(", "))));
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
    state().events.append({event->isDown ? Recording::Event::KeyDown : Recording::Event::KeyUp,
                           indexOf(*static_cast<ProcessSerialNumber*>(process)), event->key,
                           event->flags, 0});
}

void platformPause(unsigned int microseconds)
{
    state().events.append(Recording::pause(microseconds));
}
