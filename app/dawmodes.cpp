// SPDX-License-Identifier: MIT
#include "dawmodes.h"

#include "editdata.h"
#include "mackeys.h"

#include <QByteArray>

#include <algorithm>
#include <iterator>

namespace {

constexpr unsigned kProToolsKeys = Button0 | ButtonTab | ButtonSpace;
constexpr unsigned kStudioOneKeys = Button0 | ButtonEnter;
const DawMode::Daw kProTools = {QLatin1String("Pro Tools"), kProToolsKeys, kProToolsKeys};
const DawMode::Daw kStudioOne = {QLatin1String("Studio One"), kStudioOneKeys, kStudioOneKeys};
const DawMode::Daw kUnknown = {kProTools.process, kProToolsKeys, Button0};

constexpr unsigned int kStopPauseUs = 100000;

constexpr KeyStroke key(unsigned char code)
{
    return {code, false, true};
}

constexpr KeyStroke command(unsigned char code)
{
    return {code, true, true};
}

// The index is the mode.
const DawMode kModes[] = {
    {kProTools, kStopPauseUs, key(kKeyKeypadEquals), &EditDataSong::Bar, key(kKeyKeypadEnter)},
    {kProTools, 0, key(kKeyKeypadDecimal), &EditDataSong::Marker, key(kKeyKeypadDecimal)},
    {kStudioOne, 0, command(kKeyT), &EditDataSong::Bar, key(kKeyReturn)},
    {kStudioOne, 0, command(kKeySemicolon), &EditDataSong::Marker, key(kKeyKeypadEnter)},
};

const DawMode kUnknownMode = {kUnknown, 0, key(0), nullptr, key(0)};

} // namespace

const DawMode& dawMode(std::int32_t mode)
{
    return mode >= 0 && mode < static_cast<std::int32_t>(std::size(kModes)) ? kModes[mode]
                                                                            : kUnknownMode;
}

std::int32_t modeOfProcess(const QString& process)
{
    const auto* const found =
        std::find_if(std::begin(kModes), std::end(kModes),
                     [&process](const DawMode& mode) { return mode.daw.process == process; });
    return found == std::end(kModes) ? -1 : static_cast<std::int32_t>(found - kModes);
}

std::vector<KeyStroke> locateKeys(const DawMode& mode, const EditDataSong& song)
{
    if (!mode.number) {
        return {};
    }
    std::vector<KeyStroke> strokes{mode.opener};
    for (const char digit : QByteArray::number(std::max(song.*mode.number, 0))) {
        strokes.push_back({static_cast<unsigned char>(digit), false, false});
    }
    strokes.push_back(mode.closer);
    return strokes;
}
