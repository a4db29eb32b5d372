// SPDX-License-Identifier: MIT
#include "check.h"
#include "editdata.h"

#include <QRegularExpression>

#include <algorithm>
#include <tuple>

// A set-list file: what is read of it holds together, and can be saved, into the same file and into
// a new one, and read again.

// Found for the comparison of lists only in the namespace of the records.
static bool operator==(const EditDataSong& a, const EditDataSong& b)
{
    return std::tie(a.Id, a.SongTitle, a.SongMemo, a.Marker, a.Bar) ==
           std::tie(b.Id, b.SongTitle, b.SongMemo, b.Marker, b.Bar);
}

static bool operator==(const EditDataSet& a, const EditDataSet& b)
{
    return std::tie(a.SetType, a.Song, a.SpaceName, a.Cue) ==
           std::tie(b.SetType, b.Song, b.SpaceName, b.Cue);
}

static bool operator==(const EditDataShow& a, const EditDataShow& b)
{
    return std::tie(a.ShowTitle, a.ShowMemo, a.SetList) ==
           std::tie(b.ShowTitle, b.ShowMemo, b.SetList);
}

namespace {

bool isSame(const EditData& a, const EditData& b)
{
    return std::tie(a.SongList, a.ShowList, a.MaxSongId) ==
           std::tie(b.SongList, b.ShowList, b.MaxSongId);
}

// The data with what follows from its songs: the highest Id, and the songs of entries, each the
// first with its Id, without the entries that have none.
EditData consistent(EditData data)
{
    data.MaxSongId = 0;
    for (const EditDataSong& song : data.SongList) {
        data.MaxSongId = std::max(data.MaxSongId, song.Id);
    }
    for (EditDataShow& show : data.ShowList) {
        std::vector<EditDataSet> entries;
        for (EditDataSet& entry : show.SetList) {
            const auto song =
                std::find_if(data.SongList.begin(), data.SongList.end(),
                             [&](const EditDataSong& each) { return each.Id == entry.Song.Id; });
            if (entry.SetType == kSetTypeSpace) {
                entry.Song = {};
                entries.push_back(entry);
            } else if (entry.SetType == kSetTypeSong && song != data.SongList.end()) {
                entry.Song = *song;
                entries.push_back(entry);
            }
        }
        show.SetList = std::move(entries);
    }
    return data;
}

// Such a count costs a second and shows nothing that a smaller one does not.
bool hasLargeCount(const std::uint8_t* bytes, std::size_t size)
{
    static const QRegularExpression kLargeCount(QStringLiteral("Num\\W*[0-9]{4}"));
    const auto length = static_cast<int>(size);
    return QString::fromLatin1(reinterpret_cast<const char*>(bytes), length).contains(kLargeCount);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (hasLargeCount(bytes, size)) {
        return 0;
    }
    const InputFile file(bytes, size);
    EditData data;
    data.readEdit(file.path());
    check(isSame(data, consistent(data)), "entries and songs fit together");
    file.save([&](const QString& path) {
        data.writeEdit(path);
        EditData again;
        again.readEdit(path);
        check(isSame(again, consistent(data)), "what was saved reads back");
    });
    return 0;
}
