// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

class JackWatch;
class QMidiMessage;
class RtMidiIn;

// A MIDI input port over RtMidi. Used from the main thread; the library delivers input on a thread
// of its own, from which every message reaches the main thread by a queued signal, in order. What
// had arrived before the port was closed, dropped or destroyed is still delivered.
//
// Each message is traced when the main thread gets to it: one debug line with its first byte, one
// line on standard output with all bytes and the library's time stamp in seconds.
//
// Errors of the library arrive as its exception RtMidiError out of the open and close operations.
// A machine on which no MIDI back end can be constructed leaves the port without one: it lists no
// ports, is never open, and each openPort tries anew and throws what the library says. So it is
// with a JACK server that stands still, when the port has been closed or is opened.
class QMidiIn : public QObject
{
    Q_OBJECT

public:
    explicit QMidiIn(QObject* parent = nullptr);
    ~QMidiIn() override;

    QStringList getPorts();
    void openPort(unsigned int index);
    // Opens the first port of exactly this name. No such port: stays closed, no error.
    void openPort(const QString& name);
    void openVirtualPort(const QString& name);
    void closePort();
    [[nodiscard]] bool isPortOpen() const;
    // What the library drops before anyone sees it; by default all three.
    void setIgnoreTypes(bool sysEx, bool timing, bool activeSensing);

    // Gives up the connection to the MIDI system. After a MIDI server has died, no object of the
    // old connection works again and a new one may be made only when all old ones of the process
    // are gone: drop the back ends of all ports first, then open. The next openPort or getPorts
    // makes a new one.
    void dropBackEnd();

signals:
    // Emitted on the library's thread; receivers live on the port's thread, which gets the signal
    // queued. The receiver reads the message during the call and never keeps or frees it. It must
    // read what it needs before it does anything that runs an event loop: the message goes away
    // with the next event.
    void midiMessageReceived(QMidiMessage* message);

public:
    // Hands on a message as if it had arrived here. It stays the caller's to free.
    void onMidiMessageReceive(QMidiMessage* message);

private:
    static void callback(double timeStamp, std::vector<unsigned char>* bytes, void* port);
    void portOpened();
    RtMidiIn& backEndOrThrow();
    RtMidiIn* backEndOrNull();

    struct
    {
        bool sysEx = true;
        bool timing = true;
        bool activeSensing = true;
    } ignored;
    std::unique_ptr<RtMidiIn> backEnd; // Null while no MIDI back end can be had.
    std::shared_ptr<JackWatch> watch;  // Over JACK only, from the first opening on.
};
