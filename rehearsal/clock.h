// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <chrono>

// CLOCK_MONOTONIC in microseconds, which is what the steady clock is wherever X runs.
inline qint64 monotonicUs()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::microseconds>(now).count();
}
