// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <vector>

class JackGuard;
class JackWatch;
class QMidiMessage;
class RtMidiOut;

// A MIDI output port over RtMidi, used from the main thread. Errors of the library arrive as its
// exception RtMidiError; see QMidiIn for a machine without a MIDI back end.
//
// What is sent while the port is closed goes nowhere: it is never handed to the library, which
// would keep it for a later connection. So do empty messages.
//
// Over JACK the library never notices that the server has died or stands still, and would hang in
// the end. Before that happens, messages are dropped, with one warning, until the server answers;
// not where the server has room for the port but for no further client, see JackWatch.
class QMidiOut : public QObject
{
    Q_OBJECT

public:
    explicit QMidiOut(QObject* parent = nullptr);
    ~QMidiOut() override;

    QStringList getPorts();
    // Throws what the library says if no MIDI back end can be had.
    void requireBackEnd() { backEndOrThrow(); }
    void openPort(unsigned int index);
    void openVirtualPort(const QString& name);
    void closePort();
    [[nodiscard]] bool isPortOpen() const;

    // Channels count from 1; every byte is the low 8 bits of its value.
    void sendNoteOn(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity);
    void sendNoteOff(std::uint32_t channel, std::uint32_t pitch, std::uint32_t velocity);
    void sendRawMessage(const std::vector<unsigned char>& bytes);
    void sendMessage(QMidiMessage* message);

    // See QMidiIn::dropBackEnd(). Takes a second when the server has died with the port open, as
    // closePort() and the destructor do.
    void dropBackEnd();

private:
    void portOpened();
    RtMidiOut& backEndOrThrow();
    RtMidiOut* backEndOrNull();

    std::unique_ptr<RtMidiOut> backEnd; // Null while no MIDI back end can be had.
    std::shared_ptr<JackWatch> watch;   // Over JACK only, from the first opening on;
    std::unique_ptr<JackGuard> guard;   // so is this.
    bool hasVirtualPort = false;        // Which the library does not count as open.
};
