// SPDX-License-Identifier: MIT
#include "macevents.h"

#include <chrono>
#include <thread>

void platformPause(unsigned int microseconds)
{
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds));
}
