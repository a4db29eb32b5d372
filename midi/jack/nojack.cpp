// SPDX-License-Identifier: MIT
// JackLink on systems without JACK.
#include "jacklink.h"

void JackLink::requireServer()
{
}

bool JackLink::isServerRunning()
{
    return false;
}

void JackLink::portOpened()
{
}

bool JackLink::canSend(std::size_t)
{
    return true;
}

bool JackLink::isServerAlive() const
{
    return true;
}

bool JackLink::closePort(RtMidi& backEnd)
{
    backEnd.closePort();
    return true;
}

void JackLink::destroy(
    std::shared_ptr<RtMidi>) // NOLINT(performance-unnecessary-value-param): as over JACK
{
}
