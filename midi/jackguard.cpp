// SPDX-License-Identifier: MIT
#include "jackguard.h"

#include "jackwatch.h"

#include <QtGlobal>

#include <utility>

namespace {

constexpr std::size_t kRingBudgetBytes = 4096; // A quarter of the library's ring.
constexpr std::size_t kRingHeaderBytes = sizeof(int);
constexpr std::uint32_t kPeriodsToEmpty = 2; // One may be under way.
constexpr std::chrono::milliseconds kPatience{1500};

} // namespace

JackGuard::JackGuard(std::shared_ptr<JackWatch> ofServer) : watch(std::move(ofServer))
{
}

void JackGuard::portOpened()
{
    openedAt = watch->periods();
}

bool JackGuard::admit(std::size_t bytes)
{
    if (!watch->isConnected()) {
        return true;
    }
    const std::size_t needed = bytes + kRingHeaderBytes;
    if (watch->isServerAlive() && !watch->standsStill(kPatience) && awaitRoomFor(needed)) {
        isDropping = false;
        sentSinceMark += needed;
        return true;
    }
    if (!isDropping) {
        qWarning("The JACK server does not answer; messages to it are dropped");
    }
    isDropping = true;
    return false;
}

bool JackGuard::awaitRoomFor(std::size_t bytes)
{
    if (!watch->waitForPeriods(openedAt, kPeriodsToEmpty)) {
        return false;
    }
    noteProgress();
    while (!hasRoomFor(bytes)) {
        if (!watch->waitForPeriods(mark, kPeriodsToEmpty)) {
            return false;
        }
        noteProgress();
    }
    return true;
}

bool JackGuard::hasRoomFor(std::size_t bytes) const
{
    const std::size_t mayHold = sentBeforeMark + sentSinceMark;
    return mayHold == 0 || mayHold + bytes <= kRingBudgetBytes;
}

void JackGuard::noteProgress()
{
    if (watch->periods() - mark >= kPeriodsToEmpty) {
        mark = watch->periods();
        sentBeforeMark = std::exchange(sentSinceMark, 0);
    }
}
