// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <RtMidi.h>

#include <memory>
#include <string>
#include <vector>

// What the input and the output port have in common in their dealings with the library. Port is
// RtMidiIn or RtMidiOut; the clients of both appear to other MIDI software under clientName.

// The first compiled back end that has ports, else the first that can be constructed at all; null
// if none can.
template <class Port>
std::unique_ptr<Port> firstUsableBackEnd(const std::string& clientName)
{
    std::vector<RtMidi::Api> apis;
    RtMidi::getCompiledApi(apis);
    std::unique_ptr<Port> withoutPorts;
    for (const RtMidi::Api api : apis) {
        try {
            auto candidate = std::make_unique<Port>(api, clientName);
            // Without its server, a back end takes long to count. There is no need where it is the
            // only one.
            const bool isOnlyOne = !withoutPorts && api == apis.back();
            if (isOnlyOne || candidate->getPortCount() > 0) {
                return candidate;
            }
            if (!withoutPorts) {
                withoutPorts = std::move(candidate);
            }
        } catch (const RtMidiError&) { // NOLINT(bugprone-empty-catch): the next one may do.
        }
    }
    return withoutPorts;
}

// The back end of the library's own choice. Where that cannot be constructed (ALSA without its
// sequencer, which the library tries first and never gets past), the best of the others. Throws
// the library's RtMidiError if there is none.
template <class Port>
std::unique_ptr<Port> makeBackEnd(const std::string& clientName)
{
    try {
        return std::make_unique<Port>(RtMidi::UNSPECIFIED, clientName);
    } catch (const RtMidiError&) {
        if (auto other = firstUsableBackEnd<Port>(clientName)) {
            return other;
        }
        throw;
    }
}

// The names of all ports that the back end could open now.
QStringList portNames(RtMidi& backEnd);

// Opens the port of that index as a port that is called portName. An index beyond the last, which
// not every back end of the library survives, throws RtMidiError.
void openChecked(RtMidi& backEnd, unsigned int index, const std::string& portName);
