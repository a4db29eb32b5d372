// SPDX-License-Identifier: MIT
// One reading or writing of a set-list file in its own process, as at the start of the
// program: QSettings keeps what it has read, and the heap what it has grown to.
//   velt-bench-file read|parse|write|set FILE ENTRIES
// read and write are the program's; parse and set are the floor of each. Prints the ms it took.
#include "shows.h"
#include "timing.h"

#include <QSettings>
#include <QStringBuilder>

#include <cstdio>

namespace {

void setSongs(QSettings& file, const std::vector<EditDataSong>& songs)
{
    int n = 0;
    for (const EditDataSong& song : songs) {
        const QString group = QString("SongData%1/").arg(++n);
        file.setValue(group % QLatin1String("Id"), song.Id);
        file.setValue(group % QLatin1String("SongTitle"), song.SongTitle);
        file.setValue(group % QLatin1String("SongMemo"), song.SongMemo);
        file.setValue(group % QLatin1String("Bar"), song.Bar);
        file.setValue(group % QLatin1String("Marker"), song.Marker);
    }
    file.setValue("SongDataNum", n);
}

void setEntries(QSettings& file, const QString& show, const std::vector<EditDataSet>& entries)
{
    int n = 0;
    for (const EditDataSet& entry : entries) {
        const QString group = show + QString("SetData%1/").arg(++n);
        file.setValue(group % QLatin1String("SetType"), entry.SetType);
        file.setValue(group % QLatin1String("SpaceName"), entry.SpaceName);
        file.setValue(group % QLatin1String("Cue"), entry.Cue);
        if (entry.SetType == kSetTypeSong) {
            file.setValue(group % QLatin1String("SongId"), entry.Song.Id);
        }
    }
    file.setValue(show % QLatin1String("SetNum"), n);
}

void setShows(QSettings& file, const std::vector<EditDataShow>& shows)
{
    int n = 0;
    for (const EditDataShow& show : shows) {
        const QString group = QString("ShowData%1/").arg(++n);
        file.setValue(group % QLatin1String("ShowTitle"), show.ShowTitle);
        file.setValue(group % QLatin1String("ShowMemo"), show.ShowMemo);
        setEntries(file, group, show.SetList);
    }
    file.setValue("ShowDataNum", n);
}

double run(const QString& job, const QString& path, int entries)
{
    EditData data;
    if (job == "read") {
        return cpuMsOf([&] { data.readEdit(path); });
    }
    if (job == "parse") {
        return cpuMsOf([&] { QSettings(path, QSettings::IniFormat).allKeys(); });
    }
    data = showsOf(entries);
    if (job == "write") {
        return cpuMsOf([&] { data.writeEdit(path); });
    }
    return cpuMsOf([&] {
        QSettings file(path, QSettings::IniFormat);
        setSongs(file, data.SongList);
        setShows(file, data.ShowList);
        file.sync();
    });
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        return 2;
    }
    std::printf("%f\n", run(argv[1], argv[2], QString(argv[3]).toInt()));
    return 0;
}
