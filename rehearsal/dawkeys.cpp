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
        return macKeyForKeysym(keysym).value_or(kOtherKey);
    }
}

int keypadDigit(int key)
{
    constexpr int kKeyKeypad7 = 0x59;
    constexpr int kKeyKeypad8 = 0x5B; // The code between is none of the keypad's.
    constexpr int kKeyKeypad9 = 0x5C;
    if (key >= kKeyKeypad0 && key <= kKeyKeypad7) {
        return key - kKeyKeypad0;
    }
    return key == kKeyKeypad8 ? 8 : (key == kKeyKeypad9 ? 9 : -1);
}

QString keyLabel(int key)
{
    switch (key) {
    case kKeyT:
        return QStringLiteral("T");
    case kKeyReturn:
        return QStringLiteral("Return");
    case kKeySemicolon:
        return QStringLiteral(";");
    case kKeyTab:
        return QStringLiteral("Tab");
    case kKeySpace:
        return QStringLiteral("Space");
    case kKeyKeypadDecimal:
        return QStringLiteral(".");
    case kKeyKeypadEnter:
        return QStringLiteral("Enter");
    case kKeyKeypadEquals:
        return QStringLiteral("=");
    default:
        break;
    }
    const int digit = keypadDigit(key);
    return digit >= 0 ? QString::number(digit) : QStringLiteral("another key");
}
