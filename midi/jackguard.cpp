// SPDX-License-Identifier: MIT
#include "jackguard.h"

#include <QElapsedTimer>

#include <RtMidi.h>

namespace {

constexpr std::size_t kRingBudgetBytes = 8192; // Half of the library's ring.
constexpr std::size_t kRingHeaderBytes = sizeof(int);
constexpr qint64 kNoCycleMs = 990; // Closing a port gives up waiting for a cycle after a second.

} // namespace

JackGuard::JackGuard() = default;

JackGuard::~JackGuard() = default;

void JackGuard::portOpened()
{
    if (failed) {
        // A proof that timed out leaves the old client with a cycle to its credit.
        prober = std::make_unique<RtMidiOut>(RtMidi::UNIX_JACK, "RtMidi Output Guard");
    }
    failed = !cycleRuns();
}

bool JackGuard::admit(std::size_t bytes)
{
    const std::size_t needed = bytes + kRingHeaderBytes;
    const auto mayHold = [this] { return sentBeforeProof + sentSinceProof; };
    while (!failed && mayHold() > 0 && mayHold() + needed > kRingBudgetBytes) {
        failed = !prove();
    }
    if (!failed) {
        sentSinceProof += needed;
    }
    return !failed;
}

bool JackGuard::prove()
{
    if (!cycleRuns()) {
        qWarning("The JACK server does not answer; nothing more is sent until the port is opened");
        return false;
    }
    sentBeforeProof = sentSinceProof;
    sentSinceProof = 0;
    return true;
}

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
