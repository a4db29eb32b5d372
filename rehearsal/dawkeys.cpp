// SPDX-License-Identifier: MIT
#include "dawkeys.h"

#include "mackeys.h"

int dawKey(std::uint32_t keysym)
{
    constexpr std::uint32_t kCapitalT = 0x0054;
    constexpr std::uint32_t kKeypadSeparator = 0xFFAC;
    switch (keysym) {
    case kCapitalT:
        return kKeyT;
    case kKeypadSeparator:
        return kKeyKeypadDecimal;
    default:
        const MacKey* const key = findMacKeyOfKeysym(keysym);
        return key ? key->code : kOtherKey;
    }
}

QString keyLabel(int key)
{
    const MacKey* const known = findMacKey(key);
    return known ? QString::fromLatin1(known->name) : QStringLiteral("another key");
}
