// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <memory>

class QKeyEventSendMac;

// Finds running applications by name and types keys into one of them, whether or not it has the
// focus. The operator window owns one and uses it from the main thread only; sending blocks for
// fixed pauses. Keys are macOS virtual key codes (Apple's kVK_ constants).
//
// It does not know which application is the DAW nor what to type; the caller does. Failures are
// not reported: a key for a process that has gone is lost.
class QKeyEventSend
{
public:
    QKeyEventSend();
    ~QKeyEventSend();
    Q_DISABLE_COPY_MOVE(QKeyEventSend)

    // Takes a fresh snapshot of the running applications. Positions from an earlier one are void.
    void setProcNameList();

    // The position of the first application of exactly this name, -1 if none.
    [[nodiscard]] int getPosFromProcName(const QString& name) const;

    // The names of the snapshot, a character for each byte of their UTF-8.
    [[nodiscard]] const QStringList& procNames() const { return procNameList; }

    // False if no key reaches any application: the system does not allow it, or there is no X
    // server. Then X11 shows no application either.
    [[nodiscard]] static bool canType();

    // Presses and releases one key in the application at `pos` (0 to the snapshot's size - 1;
    // anything else types nothing) and pauses; costs 130 ms. With isVirtualKey false, a key that
    // is one of the characters '0' to '9' is typed as that digit of the numeric keypad; every
    // other value is a key code already. With isCmd the event pair carries the Command modifier.
    void sendKeyEvent(int pos, unsigned char key, bool isCmd, bool isVirtualKey);

    // Blocks the calling thread for this many microseconds, by the clock that all pauses between
    // keys use.
    static void pause(unsigned int microseconds);

private:
    std::unique_ptr<QKeyEventSendMac> backEnd;
    QStringList procNameList; // Index i is slot i of the back end's table.
};
