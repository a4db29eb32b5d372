// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QVector>

// The platform layer of tests: link velt_platform_recording instead of velt_platform. The running
// applications are those that the test sets, no key reaches a real one, and all key events and
// pauses are recorded in one list, in order. Nothing sleeps, so sequences cost no time.
//
//     Recording::setApplications({{"Finder"}, {"Pro Tools"}});
//     ... let the program locate bar 12 ...
//     const int daw = 1;
//     QCOMPARE(Recording::takeEvents(),
//              Recording::Events{Recording::pause(100000)}
//                  + Recording::presses(daw, {0x51, 0x53, 0x54, 0x4c}));
//
// One state for the whole test program, main thread only. Call reset() in init(): a test must not
// see what an earlier one left.
namespace Recording {

struct Application
{
    enum Kind {
        Other,
        Own,     // The program itself, which lists of running applications include.
        Nameless // CopyProcessName() fails for it.
    };

    // Not explicit, so that a list of names is a list of applications.
    // NOLINTNEXTLINE(google-explicit-constructor)
    Application(const char* utf8Name, Kind theKind = Other) : name(utf8Name), kind(theKind) {}

    QByteArray name;
    Kind kind;
};

// Such as "0x51 down to 1", "0x11 up to 2 with Command", "30000 us".
using Events = QStringList;

constexpr quint64 kCommand = 0x100000;
constexpr int kGone = -1; // The application of an event that was sent to one of an earlier list.

// No application, no event, no count.
void reset();
// What runs from now on, in the platform's order. What was found in an earlier list is gone, even
// where the new one has an application of the same name.
void setApplications(const QVector<Application>& applications);
// Everything recorded since the last take or reset.
Events takeEvents();
// How often the running applications were enumerated since reset().
int enumerations();
// How many strings and key events the program has not released.
int unreleased();

// Expectations, to be joined by +. A press is down, 30 ms, up, 100 ms.
QString pause(unsigned int microseconds);
Events press(int application, int key, quint64 flags = 0);
Events presses(int application, const QVector<int>& keys);

} // namespace Recording
