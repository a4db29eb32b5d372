// SPDX-License-Identifier: MIT
#include "shows.h"

namespace {

constexpr int kEntriesPerSpace = 10;

EditDataSong song(int id)
{
    EditDataSong song;
    song.Id = id;
    song.SongTitle = QString("Song number %1").arg(id);
    song.SongMemo = QString("in %1, from the album").arg(QChar('A' + id % 7));
    song.Bar = 10 + id * 40;
    song.Marker = id;
    return song;
}

EditDataSet entry(int n, const std::vector<EditDataSong>& songs)
{
    EditDataSet entry;
    if (n % kEntriesPerSpace == kEntriesPerSpace - 1) {
        entry.SetType = kSetTypeSpace;
        entry.SpaceName = QString("Talk %1").arg(n);
    } else {
        entry.Song = songs[static_cast<std::size_t>(n) % songs.size()];
    }
    entry.Cue = QString("light %1, then curtain").arg(n);
    return entry;
}

} // namespace

EditData showsOf(int entries, int entriesPerShow)
{
    EditData data;
    for (int id = 1; id <= entries / 10; ++id) {
        data.SongList.push_back(song(id));
    }
    for (int n = 0; n < entries; ++n) {
        if (n % entriesPerShow == 0) {
            data.ShowList.emplace_back();
            data.ShowList.back().ShowTitle = QString("Show %1").arg(data.ShowList.size());
        }
        data.ShowList.back().SetList.push_back(entry(n, data.SongList));
    }
    return data;
}
