// SPDX-License-Identifier: MIT
#include "deviceid.h"
#include "check.h"

#include <QByteArray>

#include <cstdlib>

// The text of an MMC device ID, against the C library's reading of a hexadecimal number.

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(bytes), static_cast<int>(size));
    const auto id = parseDeviceId(text);
    if (id) {
        const QString written = formatDeviceId(*id);
        check(written.size() == 2 && parseDeviceId(written) == id, "what is written reads back");
    }

    const QByteArray utf8 = text.toUtf8();
    char* end = nullptr;
    errno = 0;
    const unsigned long value = std::strtoul(utf8.constData(), &end, 16);
    if (errno != ERANGE) { // There, the device ID still goes by the last two digits.
        check(id.has_value() == (end != utf8.constData()), "a number is where C reads one");
        check(!id || *id == value % 256, "the number is C's, modulo 256");
    }
    return 0;
}
