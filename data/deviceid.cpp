// SPDX-License-Identifier: MIT
#include "deviceid.h"

#include <QByteArray>

#include <cerrno>
#include <cstdlib>

std::optional<std::uint8_t> parseDeviceId(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    char* end = nullptr;
    errno = 0;
    unsigned long value = std::strtoul(bytes.constData(), &end, 16);
    if (end == bytes.constData()) {
        return std::nullopt;
    }
    if (errno == ERANGE) { // The last two of many digits tell.
        value = std::strtoul(end - 2, nullptr, 16);
        value = bytes.trimmed().startsWith('-') ? 256 - value : value;
    }
    return static_cast<std::uint8_t>(value % 256);
}

QString formatDeviceId(std::uint8_t deviceId)
{
    return QStringLiteral("%1").arg(deviceId, 2, 16, QLatin1Char('0')).toUpper();
}
