// SPDX-License-Identifier: MIT
#include "mackeys.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr MacKey kKeys[] = {
    {kKeyT, 0x0074, 28, "T"},
    {kKeyReturn, 0xFF0D, 36, "Return"},
    {kKeySemicolon, 0x003B, 47, ";"},
    {kKeyTab, 0xFF09, 23, "Tab"},
    {kKeySpace, 0x0020, 65, "Space"},
    {kKeyKeypadDecimal, 0xFFAE, 91, "."},
    {kKeyKeypadEnter, 0xFF8D, 104, "Enter"},
    {kKeyKeypadEquals, 0xFFBD, 125, "="},
    {kKeyKeypad0, kKeysymKeypad0, 90, "0"},
    {0x53, 0xFFB1, 87, "1"},
    {0x54, 0xFFB2, 88, "2"},
    {0x55, 0xFFB3, 89, "3"},
    {0x56, 0xFFB4, 83, "4"},
    {0x57, 0xFFB5, 84, "5"},
    {0x58, 0xFFB6, 85, "6"},
    {0x59, 0xFFB7, 79, "7"},
    {0x5B, 0xFFB8, 80, "8"}, // 0x5A is no digit.
    {0x5C, 0xFFB9, 81, "9"},
};

template <class Column>
const MacKey* find(Column column, std::int64_t value)
{
    const auto* const found =
        std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& key) {
            return static_cast<std::int64_t>(key.*column) == value;
        });
    return found == std::end(kKeys) ? nullptr : found;
}

} // namespace

const MacKey* findMacKey(int code)
{
    return find(&MacKey::code, code);
}

const MacKey* findMacKeyOfKeysym(std::uint32_t keysym)
{
    return find(&MacKey::keysym, keysym);
}

unsigned char keypadKey(int digit)
{
    return findMacKeyOfKeysym(kKeysymKeypad0 + static_cast<std::uint32_t>(digit))->code;
}

int keypadDigit(int code)
{
    const MacKey* const key = findMacKey(code);
    const bool isDigit = key && key->keysym >= kKeysymKeypad0 && key->keysym <= kKeysymKeypad9;
    return isDigit ? static_cast<int>(key->keysym - kKeysymKeypad0) : -1;
}
