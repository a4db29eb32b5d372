// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

class QMidiMessage;

// What an input port makes of a received message: the bytes of MIDI 1.0, at least one, and the
// library's time since the message before, in seconds. Data bytes that are not there read as 0;
// those beyond what the status needs are left out.
std::unique_ptr<QMidiMessage> decodeMidi(double stampSeconds,
                                         const std::vector<unsigned char>& bytes);
