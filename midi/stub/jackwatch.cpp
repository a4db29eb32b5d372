// SPDX-License-Identifier: MIT
// For systems without JACK.
#include "jackwatch.h"

std::shared_ptr<JackWatch> JackWatch::ofProcess(RtMidi::Api)
{
    return nullptr;
}

std::shared_ptr<JackWatch> JackWatch::ofProcessIfAny(RtMidi::Api)
{
    return nullptr;
}

JackWatch::~JackWatch() = default;

bool JackWatch::standsStill(std::chrono::milliseconds)
{
    return false;
}

bool JackWatch::isConnected()
{
    return false;
}

bool JackWatch::waitForPeriods(std::uint32_t, std::uint32_t)
{
    return true;
}

bool JackWatch::awaitQuietGraph()
{
    return true;
}

void JackWatch::keep(std::shared_ptr<JackWatch>, std::shared_ptr<void>)
{
}

void JackWatch::requireAnswer()
{
}
