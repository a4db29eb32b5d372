// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

// The traces of MIDI messages, of one byte or more. They never wait: what the terminal or pipe does
// not take at once, such as one paused by Ctrl+S, is dropped. Called on any thread.

// One debug line with the first byte minus 144 (the channel of a note on, from 0), and one line on
// standard output with all bytes and RtMidi's time stamp in seconds.
void traceReceived(double stampSeconds, const std::vector<unsigned char>& bytes);
// One debug line with the first byte.
void traceSent(const std::vector<unsigned char>& bytes);
