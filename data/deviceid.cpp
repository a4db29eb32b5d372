// SPDX-License-Identifier: MIT
#include "deviceid.h"

#include <QByteArray>

namespace {

// The value of a hexadecimal digit in either case, -1 of any other character.
int hexDigitValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

bool isWhiteSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

} // namespace

std::optional<std::uint8_t> parseDeviceId(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    const char* at = bytes.constData(); // Ends with a NUL, which stops every step below.
    while (isWhiteSpace(*at)) {
        ++at;
    }
    const bool negative = *at == '-';
    if (*at == '-' || *at == '+') {
        ++at;
    }
    if (hexDigitValue(*at) < 0) {
        return std::nullopt;
    }
    if (*at == '0' && (at[1] == 'x' || at[1] == 'X')) {
        at += 2;
    }
    int value = 0;
    for (; hexDigitValue(*at) >= 0; ++at) {
        value = (value * 16 + hexDigitValue(*at)) % 256;
    }
    return static_cast<std::uint8_t>(negative ? 256 - value : value);
}

QString formatDeviceId(std::uint8_t deviceId)
{
    return QStringLiteral("%1").arg(deviceId, 2, 16, QLatin1Char('0')).toUpper();
}
