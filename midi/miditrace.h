// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

// The traces of MIDI messages, of one byte or more, written on the calling thread; any thread. What
// the terminal or pipe does not take at once, such as one paused by Ctrl+S, is dropped; for the
// debug lines that holds where the program has installed writeMessageAtOnce().

// One debug line with the first byte minus 144 (the channel of a note on, from 0), and one line on
// standard output with all bytes and RtMidi's time stamp in seconds.
void traceReceived(double stampSeconds, const std::vector<unsigned char>& bytes);
// One debug line with the first byte.
void traceSent(const std::vector<unsigned char>& bytes);
