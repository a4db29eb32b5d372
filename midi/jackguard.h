// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>

#include <cstddef>
#include <memory>

class RtMidiOut;

// Keeps an output port over JACK from sending to a server that takes nothing any more. The library
// puts what is sent into a ring of 16 KiB that the server's cycles empty, and says nothing about a
// server that has died or stands still: messages pile up, and the one that does not fit makes the
// library spin for ever.
//
// The guard therefore lets no more into the ring than fits without a proof that cycles still run.
// A proof opens and closes a port on a JACK client of the guard's own: opening fails when the
// server has died, closing waits for a cycle. It takes about one period, comes due once in some
// hundred short messages, and leaves the guarded port, its connections and its ring alone.
//
// Used by QMidiOut, from its thread only.
class JackGuard
{
public:
    JackGuard();
    ~JackGuard();
    Q_DISABLE_COPY_MOVE(JackGuard)

    // To be called after the guarded port has been opened, and at no other time: makes the client
    // for the proofs where there is none, and a client must not be made while the server may be
    // dead, see QMidiIn::dropBackEnd(). Waits for a cycle, from which on the port's new connection
    // carries what is sent.
    void portOpened();

    // To be called before each message of so many bytes: true if the ring will take it. False while
    // cycles do not run, with a warning at the first message; asks again once a second.
    [[nodiscard]] bool admit(std::size_t bytes);

private:
    bool prove();
    bool cycleRuns();

    std::unique_ptr<RtMidiOut> prober;
    QElapsedTimer sinceFailure; // Invalid unless the last proof failed.
    // Bytes that may still be in the ring. The cycle that a proof saw has emptied it of what was
    // sent before the proof ahead of it, and perhaps not yet of what was sent after that.
    std::size_t sentBeforeProof = 0;
    std::size_t sentSinceProof = 0;
};
