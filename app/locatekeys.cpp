// SPDX-License-Identifier: MIT
#include "locatekeys.h"

#include "editdata.h"

#include <algorithm>

namespace {

constexpr unsigned int kProToolsStopPauseUs = 100000;

constexpr KeyStroke plain(unsigned char key)
{
    return {key, false, true};
}

constexpr KeyStroke command(unsigned char key)
{
    return {key, true, true};
}

std::vector<KeyStroke> entry(KeyStroke opener, std::int32_t number, KeyStroke confirm)
{
    std::vector<KeyStroke> strokes{opener};
    const QByteArray digits = QByteArray::number(std::max(number, 0));
    for (const char digit : digits) {
        strokes.push_back({static_cast<unsigned char>(digit), false, false});
    }
    strokes.push_back(confirm);
    return strokes;
}

} // namespace

QString dawProcessName(std::int32_t mode)
{
    return isStudioOneMode(mode) ? QStringLiteral("Studio One") : QStringLiteral("Pro Tools");
}

LocateKeys locateKeys(std::int32_t mode, const EditDataSong& song)
{
    switch (mode) {
    case kModeProToolsBars:
        return {kProToolsStopPauseUs,
                entry(plain(kKeyKeypadEquals), song.Bar, plain(kKeyKeypadEnter))};
    case kModeProToolsMarker:
        return {0, entry(plain(kKeyKeypadDecimal), song.Marker, plain(kKeyKeypadDecimal))};
    case kModeStudioOneBars:
        return {0, entry(command(kKeyT), song.Bar, plain(kKeyReturn))};
    case kModeStudioOneMarker:
        return {0, entry(command(kKeySemicolon), song.Marker, plain(kKeyKeypadEnter))};
    default:
        return {0, {}};
    }
}
