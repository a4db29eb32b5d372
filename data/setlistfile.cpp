// SPDX-License-Identifier: MIT
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

// An entry that a show counts but the file does not hold reads as one of the song with Id 0. Where
// a file has such a song, every show gets the first of these, and all shows together this many
// more.
constexpr std::int32_t kMaxGapEntries = 100'000;

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
// room for more: the settings class keeps those that are written.
class GroupKeys
{
public:
    explicit GroupKeys(QLatin1String groupName, QString parentPrefix = {})
        : parent(std::move(parentPrefix)), group(parent + groupName)
    {
    }

    void select(std::int32_t n) { selected = group % QString::number(n) % QLatin1Char('/'); }

    // A key of the selected group.
    QString operator()(QLatin1String name) const { return selected % name; }

    [[nodiscard]] const QString& prefix() const { return selected; }
    [[nodiscard]] const QString& parentPrefix() const { return parent; }

private:
    QString parent;
    QString group;
    QString selected;
};

std::int32_t readCount(const QSettings& file, const QString& key)
{
    return std::clamp(file.value(key).toInt(), 0, kMaxCount);
}

std::vector<EditDataSong> readSongs(QSettings& file)
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
    ShowReader(QSettings& settings, const std::vector<EditDataSong>& songs);

    std::vector<EditDataShow> readShows();

private:
    using SetList = std::vector<EditDataSet>;

    SetList readSetList(GroupKeys& show);

    // `key` makes the keys of the entries of one show.
    bool readEntry(GroupKeys& key, std::int32_t n, SetList& entries);
    void readSparse(GroupKeys& key, std::int32_t first, std::int32_t last, SetList& entries);
    std::vector<std::int32_t> presentEntries(const GroupKeys& key, std::int32_t first,
                                             std::int32_t last);
    void fillGap(std::int32_t length, SetList& entries);

    QSettings& file;
    QHash<std::int32_t, const EditDataSong*> songOfId;
    std::int32_t gapEntriesLeft = kMaxGapEntries;
};

ShowReader::ShowReader(QSettings& settings, const std::vector<EditDataSong>& songs) : file(settings)
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

ShowReader::SetList ShowReader::readSetList(GroupKeys& show)
{
    SetList entries;
    const std::int32_t count = readCount(file, show(kSetNum));
    GroupKeys key(kEntryGroup, show.prefix());
    std::int32_t n = 1;
    while (n <= count && readEntry(key, n, entries)) {
        ++n;
    }
    readSparse(key, n + 1, count, entries);
    return entries;
}

// Appends the n-th entry, unless its song is not in the file or its kind is unknown. Returns false
// if the entry has no kind, which means that it is missing altogether, or damaged.
bool ShowReader::readEntry(GroupKeys& key, std::int32_t n, SetList& entries)
{
    key.select(n);
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

// Reads the rest of a show of which an entry was missing. Only entries that are in the file are
// looked up, so that a count that is far too large costs next to nothing.
void ShowReader::readSparse(GroupKeys& key, std::int32_t first, std::int32_t last, SetList& entries)
{
    if (first > last) {
        return;
    }
    for (const std::int32_t n : presentEntries(key, first, last)) {
        fillGap(n - first, entries);
        readEntry(key, n, entries);
        first = n + 1;
    }
    fillGap(last + 1 - first, entries);
}

// The numbers from `first` to `last` of entries that are in the file, ascending.
std::vector<std::int32_t> ShowReader::presentEntries(const GroupKeys& key, std::int32_t first,
                                                     std::int32_t last)
{
    std::vector<std::int32_t> numbers;
    file.beginGroup(key.parentPrefix());
    const QStringList groups = file.childGroups();
    file.endGroup();
    for (const QString& group : groups) {
        const std::int32_t n = group.midRef(kEntryGroup.size()).toInt();
        if (n >= first && n <= last && group == kEntryGroup + QString::number(n)) {
            numbers.push_back(n);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    return numbers;
}

// Appends what missing entries read as.
void ShowReader::fillGap(std::int32_t length, SetList& entries)
{
    if (const EditDataSong* song = songOfId.value(0)) {
        EditDataSet entry;
        entry.Song = *song;
        const std::int32_t count = std::min(length, gapEntriesLeft);
        entries.insert(entries.end(), static_cast<std::size_t>(count), entry);
        gapEntriesLeft -= count;
    }
}

void writeSongs(SettingsWriter& file, const std::vector<EditDataSong>& songs)
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

void writeSetList(SettingsWriter& file, GroupKeys& show, const std::vector<EditDataSet>& entries)
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

void writeShows(SettingsWriter& file, const std::vector<EditDataShow>& shows)
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
    readSettingsFile(path, [this](QSettings& file) {
        // Makes the settings class parse all of the file now: while it has sections that it has not
        // parsed yet, every look-up searches these as well.
        file.childKeys();
        std::vector<EditDataSong> songs = readSongs(file);
        ShowList = ShowReader(file, songs).readShows();
        SongList = std::move(songs);
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
    writeSettingsFile(path, [this](SettingsWriter& file) {
        writeSongs(file, SongList);
        writeShows(file, ShowList);
    });
}
