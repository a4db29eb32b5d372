// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

class JackWatch;

// Keeps an output port over JACK from sending to a server that takes nothing any more. The library
// puts what is sent into a ring of 16 KiB that the server's periods empty, and says nothing about a
// server that has died or stands still: messages pile up, the DAW gets them whenever the server
// goes on, and the one that does not fit makes the library spin for ever.
//
// The guard therefore lets nothing through to a server that stands still, and no more into the ring
// than fits without periods passing.
//
// Used by QMidiOut, from its thread only.
class JackGuard
{
public:
    explicit JackGuard(std::shared_ptr<JackWatch> ofServer);

    // To be called after the guarded port has been opened.
    void portOpened();

    // To be called before each message of so many bytes: true if the ring will take it. False while
    // no periods pass, with a warning at the first message. Waits for a connection just made to
    // carry what is sent, and for the ring to empty: some periods, and at most 1.5 s if none pass,
    // but not again until they do. Always true if the server takes no watch.
    [[nodiscard]] bool admit(std::size_t bytes);

private:
    [[nodiscard]] bool awaitRoomFor(std::size_t bytes);
    [[nodiscard]] bool hasRoomFor(std::size_t bytes) const;
    void noteProgress();

    std::shared_ptr<JackWatch> watch;
    bool isDropping = false;
    std::uint32_t openedAt = 0; // The count of periods at that moment.
    // Bytes that may still be in the ring. Two periods on, what was sent before they began has left
    // it, and perhaps not yet what was sent after that.
    std::uint32_t mark = 0;
    std::size_t sentBeforeMark = 0;
    std::size_t sentSinceMark = 0;
};
