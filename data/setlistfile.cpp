// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "editdata.h"
#include "settingsfile.h"

#include <QHash>
#include <QSettings>
#include <QStringBuilder>

#include <algorithm>

namespace {

// No real file holds more songs, more shows, or more entries in a show; larger counts are taken as
// this one, so that a count alone cannot exhaust the program.
constexpr std::int32_t kMaxCount = 100'000;

// Of the entries that shows count but the file does not hold, this many are looked up in a file.
// The next one ends its show.
constexpr std::int32_t kMaxMissingEntries = 100'000;

const QLatin1String kSongDataNum("SongDataNum");
const QLatin1String kSongGroup("SongData");
const QLatin1String kId("Id");
const QLatin1String kSongTitle("SongTitle");
const QLatin1String kSongMemo("SongMemo");
const QLatin1String kBar("Bar");
const QLatin1String kMarker("Marker");

const QLatin1String kShowDataNum("ShowDataNum");
const QLatin1String kShowGroup("ShowData");
const QLatin1String kShowTitle("ShowTitle");
const QLatin1String kShowMemo("ShowMemo");
const QLatin1String kSetNum("SetNum");

const QLatin1String kEntryGroup("SetData"); // Inside the group of its show.
const QLatin1String kSetType("SetType");
const QLatin1String kSpaceName("SpaceName");
const QLatin1String kCue("Cue");
const QLatin1String kSongId("SongId");

// The keys of numbered groups, such as SongData3/Bar; numbers start at 1. Keys are made without
// spare room, as QSettings keeps those that are written.
class GroupKeys
{
public:
    explicit GroupKeys(QLatin1String groupName, const QString& parentPrefix = {})
        : group(parentPrefix + groupName)
    {
    }

    void select(std::int32_t n) { selected = group % QString::number(n) % QLatin1Char('/'); }

    // A key of the selected group.
    QString operator()(QLatin1String name) const { return selected % name; }

    [[nodiscard]] const QString& prefix() const { return selected; }

private:
    QString group;
    QString selected;
};

std::int32_t readCount(const QSettings& file, const QString& key)
{
    return std::clamp(file.value(key).toInt(), 0, kMaxCount);
}

std::vector<EditDataSong> readSongs(const QSettings& file)
{
    std::vector<EditDataSong> songs;
    GroupKeys key(kSongGroup);
    const std::int32_t count = readCount(file, kSongDataNum);
    for (std::int32_t n = 1; n <= count; ++n) {
        key.select(n);
        EditDataSong song;
        song.Id = file.value(key(kId)).toInt();
        song.SongTitle = file.value(key(kSongTitle)).toString();
        song.SongMemo = file.value(key(kSongMemo)).toString();
        song.Bar = file.value(key(kBar)).toInt();
        song.Marker = file.value(key(kMarker)).toInt();
        songs.push_back(std::move(song));
    }
    return songs;
}

// Reads the shows of a file whose songs have been read.
class ShowReader
{
public:
    ShowReader(const QSettings& settings, const std::vector<EditDataSong>& songs);

    std::vector<EditDataShow> readShows();

private:
    using SetList = std::vector<EditDataSet>;

    SetList readSetList(const GroupKeys& show);
    bool readEntry(const GroupKeys& key, SetList& entries) const;

    const QSettings& file;
    QHash<std::int32_t, const EditDataSong*> songOfId;
    std::int32_t missingEntries = 0;
};

ShowReader::ShowReader(const QSettings& settings, const std::vector<EditDataSong>& songs)
    : file(settings)
{
    songOfId.reserve(static_cast<int>(songs.size()));
    for (const EditDataSong& song : songs) {
        if (!songOfId.contains(song.Id)) { // The first in the file stands for its Id.
            songOfId.insert(song.Id, &song);
        }
    }
}

std::vector<EditDataShow> ShowReader::readShows()
{
    std::vector<EditDataShow> shows;
    GroupKeys key(kShowGroup);
    const std::int32_t count = readCount(file, kShowDataNum);
    for (std::int32_t n = 1; n <= count; ++n) {
        key.select(n);
        EditDataShow show;
        show.ShowTitle = file.value(key(kShowTitle)).toString();
        show.ShowMemo = file.value(key(kShowMemo)).toString();
        show.SetList = readSetList(key);
        shows.push_back(std::move(show));
    }
    return shows;
}

ShowReader::SetList ShowReader::readSetList(const GroupKeys& show)
{
    SetList entries;
    GroupKeys key(kEntryGroup, show.prefix());
    const std::int32_t count = readCount(file, show(kSetNum));
    for (std::int32_t n = 1; n <= count; ++n) {
        key.select(n);
        if (!readEntry(key, entries) && ++missingEntries > kMaxMissingEntries) {
            break;
        }
    }
    return entries;
}

// Appends an entry, unless its song is not in the file or its kind is unknown. Returns false if the
// file has no kind for it: it is damaged or missing, and reads as the song with Id 0.
bool ShowReader::readEntry(const GroupKeys& key, SetList& entries) const
{
    const QVariant setType = file.value(key(kSetType));
    EditDataSet entry;
    entry.SetType = setType.toInt();
    entry.SpaceName = file.value(key(kSpaceName)).toString();
    entry.Cue = file.value(key(kCue)).toString();
    if (entry.SetType == kSetTypeSpace) {
        entries.push_back(std::move(entry));
    } else if (entry.SetType == kSetTypeSong) {
        if (const EditDataSong* song = songOfId.value(file.value(key(kSongId)).toInt())) {
            entry.Song = *song;
            entries.push_back(std::move(entry));
        }
    }
    return setType.isValid();
}

void writeSongs(QSettings& file, const std::vector<EditDataSong>& songs)
{
    GroupKeys key(kSongGroup);
    std::int32_t n = 0;
    for (const EditDataSong& song : songs) {
        key.select(++n);
        file.setValue(key(kId), song.Id);
        file.setValue(key(kSongTitle), song.SongTitle);
        file.setValue(key(kSongMemo), song.SongMemo);
        file.setValue(key(kBar), song.Bar);
        file.setValue(key(kMarker), song.Marker);
    }
    file.setValue(kSongDataNum, n);
}

void writeSetList(QSettings& file, const GroupKeys& show, const std::vector<EditDataSet>& entries)
{
    GroupKeys key(kEntryGroup, show.prefix());
    std::int32_t n = 0;
    for (const EditDataSet& entry : entries) {
        key.select(++n);
        file.setValue(key(kSetType), entry.SetType);
        file.setValue(key(kSpaceName), entry.SpaceName);
        file.setValue(key(kCue), entry.Cue);
        if (entry.SetType == kSetTypeSong) {
            file.setValue(key(kSongId), entry.Song.Id);
        }
    }
    file.setValue(show(kSetNum), n);
}

void writeShows(QSettings& file, const std::vector<EditDataShow>& shows)
{
    GroupKeys key(kShowGroup);
    std::int32_t n = 0;
    for (const EditDataShow& show : shows) {
        key.select(++n);
        file.setValue(key(kShowTitle), show.ShowTitle);
        file.setValue(key(kShowMemo), show.ShowMemo);
        writeSetList(file, key, show.SetList);
    }
    file.setValue(kShowDataNum, n);
}

} // namespace

void EditData::readEdit(const QString& path)
{
    ShowList.clear();
    SongList.clear();
    MaxSongId = 0;
    readSettingsFile(path, [this](const QSettings& file) {
        file.childKeys(); // Parses all sections now; otherwise every look-up searches for its
                          // section.
        SongList = readSongs(file);
        ShowList = ShowReader(file, SongList).readShows();
    });
    for (const EditDataSong& song : SongList) {
        MaxSongId = std::max(MaxSongId, song.Id);
    }
}

void EditData::writeEdit(const QString& path)
{
    SongList.erase(std::remove_if(SongList.begin(), SongList.end(),
                                  [](const auto& song) { return song.SongTitle.isEmpty(); }),
                   SongList.end());
    ShowList.erase(std::remove_if(ShowList.begin(), ShowList.end(),
                                  [](const auto& show) { return show.ShowTitle.isEmpty(); }),
                   ShowList.end());
    // The standard file as it is before this run of the program changes it.
    static bool isBackedUp = false;
    const bool isStandard = path == setListFilePath();
    const bool isWritten = writeSettingsFile(
        path,
        [this](QSettings& file) {
            writeSongs(file, SongList);
            writeShows(file, ShowList);
        },
        isStandard && !isBackedUp ? setListBackupPath() : QString());
    isBackedUp = isBackedUp || (isStandard && isWritten);
}
