// SPDX-License-Identifier: MIT
#pragma once

// The value of a hexadecimal digit in either case, -1 of any other character.
constexpr int hexDigitValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}
