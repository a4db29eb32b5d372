// SPDX-License-Identifier: MIT
#include "check.h"
#include "editdata.h"

#include <QRegularExpression>

#include <algorithm>

// A set-list file: what is read of it holds together, and can be saved, into the same file and into
// a new one, and read again.

namespace {

EditData read(const QString& path)
{
    EditData data;
    data.readEdit(path);
    return data;
}

// A song entry has the first song with its Id, and a space none.
bool fits(const EditDataSet& entry, const std::vector<EditDataSong>& songs)
{
    const auto song = std::find_if(songs.begin(), songs.end(), [&entry](const EditDataSong& each) {
        return each.Id == entry.Song.Id;
    });
    return entry.SetType == kSetTypeSpace
               ? entry.Song.Id == 0 && entry.Song.SongTitle.isNull()
               : song != songs.end() && entry.Song.SongTitle == song->SongTitle;
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
    const EditData data = read(InputFile::path());
    for (const EditDataShow& show : data.ShowList) {
        for (const EditDataSet& entry : show.SetList) {
            check(fits(entry, data.SongList), "entries and songs fit together");
        }
    }
    InputFile::checkSaving(read,
                           [](const QString& path, EditData& saved) { saved.writeEdit(path); });
    return 0;
}
