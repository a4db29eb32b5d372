// SPDX-License-Identifier: MIT
// Filling the tables: a show that is switched to, the editor that opens.
#include "baretable.h"
#include "benchmarks.h"
#include "comparison.h"
#include "editdialog.h"
#include "shows.h"
#include "timing.h"
#include "windowdriver.h"

#include <QListWidget>

namespace {

constexpr Target kTarget{1.3};
constexpr int kSmallShow = 30;

int repetitions(int entries)
{
    return 11 + 20000 / entries;
}

// Lets the entries have the very texts that the table has, so that they lie in the same memory.
void shareTexts(const QTableWidget& table, std::vector<EditDataSet>& setList)
{
    int row = 0;
    for (EditDataSet& entry : setList) {
        entry.Song.SongTitle = entry.SpaceName = table.item(row, 0)->text();
        entry.Cue = table.item(row, 1)->text();
        ++row;
    }
}

// `finish` is done on both sides, in the time that is measured.
void measureShowSwitch(benchmark::State& state, int entries, const std::function<void()>& finish)
{
    EditData data = showsOf(2 * entries, entries);
    const WindowDriver velt(data);
    const auto bare = makeBareTable(*velt.table);
    bare->move(velt.window.x() + velt.window.width(), 0);
    bare->show();
    paintAll();
    for (EditDataShow& show : data.ShowList) {
        velt.shows->setCurrentText(show.ShowTitle);
        shareTexts(*velt.table, show.SetList);
    }
    Comparison ms;
    for (int i = 0; i < repetitions(entries); ++i) {
        const int next = 1 - velt.shows->currentIndex();
        const auto& setList = data.ShowList[static_cast<std::size_t>(next)].SetList;
        ms.ours(cpuMsOf([&] {
            velt.shows->setCurrentIndex(next);
            finish();
        }));
        ms.floor(cpuMsOf([&] {
            fillBareSetList(bare.get(), setList);
            finish();
        }));
        paintAll();
    }
    ms.report(state, kTarget);
}

// The editor's tables and its list, empty and not yet shown.
struct BareEditor
{
    explicit BareEditor(const EditDialog& editor)
        : shows(bareTable(editor, "tableShowList")),
          setList(bareTable(editor, "tableSetList")),
          songs(bareTable(editor, "tableSongList"))
    {
    }

    void fill(const EditData& data)
    {
        fillBareShows(shows.get(), data.ShowList);
        fillBareSetList(setList.get(), data.ShowList.front().SetList);
        fillBareSongs(songs.get(), data.SongList);
        QStringList titles;
        for (const EditDataSong& song : data.SongList) {
            titles.append(song.SongTitle);
        }
        songTitles.addItems(titles);
    }

    static std::unique_ptr<QTableWidget> bareTable(const EditDialog& editor, const char* name)
    {
        return makeBareTable(*editor.findChild<QTableWidget*>(name));
    }

    std::unique_ptr<QTableWidget> shows;
    std::unique_ptr<QTableWidget> setList;
    std::unique_ptr<QTableWidget> songs;
    QListWidget songTitles;
};

// The first time that the editor opens; later it keeps what has not changed.
void measureEditor(benchmark::State& state, int entries)
{
    constexpr int kShows = 10;
    EditData data = showsOf(kShows * entries, entries);
    Comparison ms;
    for (int i = 0; i < repetitions(entries) / 10; ++i) {
        EditDialog editor(&data, nullptr);
        BareEditor bare(editor);
        ms.ours(cpuMsOf([&] { editor.setDispFromEdit(); }));
        ms.floor(cpuMsOf([&] { bare.fill(data); }));
    }
    ms.report(state, kTarget);
}

} // namespace

void addTables()
{
    add("switch to a show of 30 entries, painted (ms)",
        [](benchmark::State& state) { measureShowSwitch(state, kSmallShow, paintAll); });
    for (const int entries : {1000, 10000}) {
        add("switch to a show of " + std::to_string(entries) + " entries (ms)",
            [=](benchmark::State& state) { measureShowSwitch(state, entries, [] {}); });
    }
    for (const int entries : {100, 1000}) {
        add("fill the editor: " + std::to_string(entries) + " entries, as many songs (ms)",
            [=](benchmark::State& state) { measureEditor(state, entries); });
    }
}
