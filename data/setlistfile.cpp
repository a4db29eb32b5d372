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

// A show can count entries that the file does not have. After this many in a file, each further one
// ends its show.
constexpr std::int32_t kMaxMissingEntries = 100'000;

// Walks the numbered groups of a file, such as SongData3 and ShowData1/SetData2. Numbers start
// at 1.
class GroupWalk
{
protected:
    GroupWalk() { prefix.reserve(kLongestKey); }

    template <typename Visit>
    void visit(const char* group, std::int32_t n, const Visit& what)
    {
        const auto parent = prefix.size();
        prefix += QLatin1String(group);
        prefix += QString::number(n);
        prefix += QLatin1Char('/');
        what();
        prefix.truncate(parent);
    }

    QString prefix; // Of the keys in the group.

private:
    static constexpr int kLongestKey = 64;
};

class Reader : GroupWalk
{
public:
    explicit Reader(const QSettings& settings) : file(settings) {}

    std::vector<EditDataSong> readSongs();
    std::vector<EditDataShow> readShows(const std::vector<EditDataSong>& songs);

private:
    // Allocates nothing for a key: most of the time goes into look-ups.
    QVariant value(const char* name)
    {
        const auto group = prefix.size();
        QVariant result = file.value(prefix += QLatin1String(name));
        prefix.truncate(group);
        return result;
    }
    std::int32_t number(const char* name) { return value(name).toInt(); }
    QString text(const char* name) { return value(name).toString(); }

    // Calls `read` in each group until it returns false.
    template <typename Read>
    void readGroups(const char* countName, const char* group, const Read& read)
    {
        const std::int32_t count = std::clamp(number(countName), 0, kMaxCount);
        bool isMore = true;
        for (std::int32_t n = 1; n <= count && isMore; ++n) {
            visit(group, n, [&] { isMore = read(); });
        }
    }

    bool readEntry(std::vector<EditDataSet>& entries);

    const QSettings& file;
    QHash<std::int32_t, const EditDataSong*> songOfId;
    std::int32_t missingEntries = 0;
};

std::vector<EditDataSong> Reader::readSongs()
{
    std::vector<EditDataSong> songs;
    readGroups("SongDataNum", "SongData", [&] {
        songs.push_back(
            {number("Id"), text("SongTitle"), text("SongMemo"), number("Marker"), number("Bar")});
        return true;
    });
    return songs;
}

std::vector<EditDataShow> Reader::readShows(const std::vector<EditDataSong>& songs)
{
    songOfId.reserve(static_cast<int>(songs.size()));
    std::for_each(songs.rbegin(), songs.rend(), [this](const EditDataSong& song) {
        songOfId.insert(song.Id, &song); // Of songs with one Id, the first counts: inserted last.
    });
    std::vector<EditDataShow> shows;
    // Makes QSettings parse the sections of all shows: then look-ups are faster.
    readGroups("ShowDataNum", "ShowData", [this] {
        value("SetNum");
        return true;
    });
    readGroups("ShowDataNum", "ShowData", [&] {
        EditDataShow show{text("ShowTitle"), text("ShowMemo"), {}};
        readGroups("SetNum", "SetData", [&] {
            return readEntry(show.SetList) || ++missingEntries <= kMaxMissingEntries;
        });
        shows.push_back(std::move(show));
        return true;
    });
    return shows;
}

// Appends an entry, unless its song is not in the file or its kind is unknown. Returns false if the
// file has no kind for it: such an entry is missing or damaged, and reads as the song with Id 0.
bool Reader::readEntry(std::vector<EditDataSet>& entries)
{
    const QVariant setType = value("SetType");
    EditDataSet entry{setType.toInt(), {}, text("SpaceName"), text("Cue")};
    if (entry.SetType == kSetTypeSpace) {
        entries.push_back(std::move(entry));
    } else if (entry.SetType == kSetTypeSong) {
        if (const EditDataSong* song = songOfId.value(number("SongId"))) {
            entry.Song = *song;
            entries.push_back(std::move(entry));
        }
    }
    return setType.isValid();
}

class Writer : GroupWalk
{
public:
    explicit Writer(QSettings& settings) : file(settings) {}

    void writeSongs(const std::vector<EditDataSong>& songs);
    void writeShows(const std::vector<EditDataShow>& shows);

private:
    // Makes a key without spare capacity, since QSettings keeps it.
    void set(const char* name, const QVariant& value)
    {
        file.setValue(prefix % QLatin1String(name), value);
    }

    template <typename Records, typename Write>
    void writeGroups(const char* countName, const char* group, const Records& records,
                     const Write& write)
    {
        std::int32_t n = 0;
        for (const auto& record : records) {
            visit(group, ++n, [&] { write(record); });
        }
        set(countName, n);
    }

    QSettings& file;
};

void Writer::writeSongs(const std::vector<EditDataSong>& songs)
{
    writeGroups("SongDataNum", "SongData", songs, [this](const EditDataSong& song) {
        set("Id", song.Id);
        set("SongTitle", song.SongTitle);
        set("SongMemo", song.SongMemo);
        set("Bar", song.Bar);
        set("Marker", song.Marker);
    });
}

void Writer::writeShows(const std::vector<EditDataShow>& shows)
{
    writeGroups("ShowDataNum", "ShowData", shows, [this](const EditDataShow& show) {
        set("ShowTitle", show.ShowTitle);
        set("ShowMemo", show.ShowMemo);
        writeGroups("SetNum", "SetData", show.SetList, [this](const EditDataSet& entry) {
            set("SetType", entry.SetType);
            set("SpaceName", entry.SpaceName);
            set("Cue", entry.Cue);
            if (entry.SetType == kSetTypeSong) {
                set("SongId", entry.Song.Id);
            }
        });
    });
}

template <typename Records, typename IsUntitled>
void removeUntitled(Records& records, const IsUntitled& isUntitled)
{
    records.erase(std::remove_if(records.begin(), records.end(), isUntitled), records.end());
}

} // namespace

void EditData::readEdit(const QString& path)
{
    ShowList.clear();
    SongList.clear();
    MaxSongId = 0;
    readSettingsFile(path, [this](const QSettings& file) {
        Reader reader(file);
        SongList = reader.readSongs();
        ShowList = reader.readShows(SongList);
    });
    for (const EditDataSong& song : SongList) {
        MaxSongId = std::max(MaxSongId, song.Id);
    }
}

void EditData::writeEdit(const QString& path)
{
    removeUntitled(SongList, [](const auto& song) { return song.SongTitle.isEmpty(); });
    removeUntitled(ShowList, [](const auto& show) { return show.ShowTitle.isEmpty(); });
    // The standard file as it is before this run of the program changes it.
    static bool isBackedUp = false;
    const bool isStandard = path == setListFilePath();
    const bool isWritten = writeSettingsFile(
        path,
        [this](QSettings& file) {
            Writer writer(file);
            writer.writeSongs(SongList);
            writer.writeShows(ShowList);
        },
        isStandard && !isBackedUp ? setListBackupPath() : QString());
    isBackedUp = isBackedUp || (isStandard && isWritten);
}
