// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

// What a call takes in ms, by one of the system's clocks.
template <typename Call>
double msOf(const Call& call, clockid_t clock)
{
    const auto now = [clock] {
        timespec time{};
        clock_gettime(clock, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    };
    const double start = now();
    call();
    return now() - start;
}

// For what waits.
template <typename Call>
double wallMsOf(const Call& call)
{
    return msOf(call, CLOCK_MONOTONIC);
}

// For what computes on this thread: the time it takes where nothing else runs.
template <typename Call>
double cpuMsOf(const Call& call)
{
    return msOf(call, CLOCK_THREAD_CPUTIME_ID);
}
