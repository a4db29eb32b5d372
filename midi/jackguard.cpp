// SPDX-License-Identifier: MIT
#include "jackguard.h"

#include <RtMidi.h>

namespace {

constexpr std::size_t kRingBudgetBytes = 4096; // A quarter of the library's ring.
constexpr std::size_t kRingHeaderBytes = sizeof(int);
constexpr qint64 kRetryMs = 1000;
constexpr qint64 kNoCycleMs = 990; // Closing a port gives up waiting for a cycle after a second.

} // namespace

JackGuard::JackGuard() = default;

JackGuard::~JackGuard() = default;

void JackGuard::portOpened()
{
    if (!prober) {
        prober = std::make_unique<RtMidiOut>(RtMidi::UNIX_JACK, "RtMidi Output Guard");
    }
    sinceFailure.invalidate();
    prove();
}

bool JackGuard::admit(std::size_t bytes)
{
    const std::size_t needed = bytes + kRingHeaderBytes;
    const auto mayHold = [this] { return sentBeforeProof + sentSinceProof; };
    while (mayHold() > 0 && mayHold() + needed > kRingBudgetBytes) {
        if (!prove()) {
            return false;
        }
    }
    sentSinceProof += needed;
    return true;
}

bool JackGuard::prove()
{
    if (sinceFailure.isValid() && !sinceFailure.hasExpired(kRetryMs)) {
        return false;
    }
    if (!cycleRuns()) {
        if (!sinceFailure.isValid()) {
            qWarning("The JACK server does not answer; messages to it are dropped");
        }
        sinceFailure.start();
        return false;
    }
    sinceFailure.invalidate();
    sentBeforeProof = sentSinceProof;
    sentSinceProof = 0;
    return true;
}

// A wait that timed out leaves a cycle to the prober's credit, so that from then on each proof is
// of the time before the last one. The budget allows for that.
bool JackGuard::cycleRuns()
{
    try {
        prober->openVirtualPort("RtMidi Output Guard");
    } catch (const RtMidiError&) {
        return false;
    }
    QElapsedTimer waited;
    waited.start();
    prober->closePort();
    return waited.elapsed() < kNoCycleMs;
}
