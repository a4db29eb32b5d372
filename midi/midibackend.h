// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <RtMidi.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

// Which of RtMidi's back ends a port uses. Port is RtMidiIn or RtMidiOut; other MIDI software sees
// its client as clientName.

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
            // Counting takes long without a server, and is not needed for the only candidate.
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

// Once, though each port tries. Main thread only.
inline void warnOfMissingBackEnd(const std::string& name)
{
    static bool isWarned = false;
    if (!std::exchange(isWarned, true)) {
        qWarning("VELT_MIDI: MIDI system \"%s\" is not available; another one is used",
                 name.c_str());
    }
}

// The one that the environment variable VELT_MIDI names: "alsa", "jack" or "core", as far as RtMidi
// was built with it. Null if it names none, or one that cannot be had: then warns once.
template <class Port>
std::unique_ptr<Port> namedBackEnd(const std::string& clientName)
{
    const std::string name = qgetenv("VELT_MIDI").toLower().toStdString();
    if (name.empty()) {
        return nullptr;
    }
    try {
        const RtMidi::Api api = RtMidi::getCompiledApiByName(name);
        if (api != RtMidi::UNSPECIFIED) {
            return std::make_unique<Port>(api, clientName);
        }
    } catch (const RtMidiError&) { // NOLINT(bugprone-empty-catch): warned of below.
    }
    warnOfMissingBackEnd(name);
    return nullptr;
}

// The back end that VELT_MIDI names, else the one that RtMidi chooses. Where that cannot be
// constructed (ALSA without its sequencer, which RtMidi tries first), the best of the others.
// Throws RtMidiError if there is none.
template <class Port>
std::unique_ptr<Port> makeBackEnd(const std::string& clientName)
{
    if (auto named = namedBackEnd<Port>(clientName)) {
        return named;
    }
    try {
        return std::make_unique<Port>(RtMidi::UNSPECIFIED, clientName);
    } catch (const RtMidiError&) {
        if (auto other = firstUsableBackEnd<Port>(clientName)) {
            return other;
        }
        throw;
    }
}
