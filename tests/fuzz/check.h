// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What a fuzz target is to define: called with one input after the other. It ends the program where
// one does what it must not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// Ends the program, which the fuzzer takes for a finding, unless what must be so is so.
inline void check(bool isSo, const char* whatMustBeSo)
{
    if (!isSo) {
        std::fprintf(stderr, "not so: %s\n", whatMustBeSo);
        std::abort();
    }
}
