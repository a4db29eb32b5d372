// SPDX-License-Identifier: MIT
#pragma once

#include <RtMidi.h>

#include <cstddef>
#include <cstdint>
#include <memory>

class JackMonitor;

// Keeps a port from what RtMidi does not survive over JACK: calls to a stalled server (see
// JackMonitor) hang, and so does sending to a dead one once RtMidi's ring buffer is full; a port
// that is unregistered while JACK looks at the ports after a change of the graph crashes the
// process (jackd2 1.9.21). Does nothing before a JACK port was opened, or on systems without JACK.
//
// Each MidiPort has one. Main thread only.
class JackLink
{
public:
    // Call before RtMidi asks anything of the server. Throws RtMidiError if it is stalled.
    static void requireServer();
    // Whether there is a server to connect to. Call before any port is opened.
    [[nodiscard]] static bool isServerRunning();
    // Call after a JACK port was opened.
    void portOpened();

    // True if a message of that many bytes can be sent now; else it must be dropped, which is
    // warned of once. Waits for RtMidi's ring buffer to empty, and at most until the server is
    // stalled.
    [[nodiscard]] bool canSend(std::size_t bytes);
    // False once the server has shut down.
    [[nodiscard]] bool isServerAlive() const;

    // False if the server is stalled: then the port is still open.
    [[nodiscard]] static bool closePort(RtMidi& backEnd);
    // Destroys a back end, which may be null, or keeps it until its server runs again or ends.
    void destroy(std::shared_ptr<RtMidi> backEnd);

private:
    [[nodiscard]] bool awaitRoomFor(std::size_t bytes);

    std::shared_ptr<JackMonitor> monitor; // The one of the process, from the first opening on.
    bool isDropping = false;
    std::size_t unsentBytes = 0; // The most that can be in the ring buffer...
    std::uint32_t sentAt = 0;    // ...which is empty two cycles after this one.
};
