// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>
#include <optional>

// The number that an MMC device-ID text stands for, by the rule of the scanf conversion "%hhx" on
// the text's UTF-8 bytes: leading white space, an optional sign and an optional 0x are accepted,
// hexadecimal digits are read up to the first other character, and the result is taken modulo 256,
// however long the text is. Nothing if the text has no digit to read; the 0 of a 0x is one.
std::optional<std::uint8_t> parseDeviceId(const QString& text);

// The text that stands for a device ID in the preference file: two upper-case hexadecimal digits.
QString formatDeviceId(std::uint8_t deviceId);
