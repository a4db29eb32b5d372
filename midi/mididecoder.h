// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <vector>

class QMidiMessage;

// Decodes a received message: the bytes of MIDI 1.0, at least one, and RtMidi's time since the
// previous message, in seconds. Missing data bytes read as 0; those beyond what the status needs
// are left out.
std::unique_ptr<QMidiMessage> decodeMidi(double stampSeconds,
                                         const std::vector<unsigned char>& bytes);
