// SPDX-License-Identifier: MIT
// The song library of the editor. Set-list entries carry copies of their songs, which are kept in
// step here.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "ui_editdialog.h"

#include <QScrollBar>
#include <QSet>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

enum SongColumn : int { kTitleColumn, kMemoColumn, kMarkerColumn, kBarColumn };

QTableWidgetItem* numberItem(const QString& text)
{
    auto* item = new QTableWidgetItem(text);
    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return item;
}

void insertSongRow(QTableWidget* table, int row, const EditDataSong& song)
{
    TableLook::insertRow(table, row,
                         {new QTableWidgetItem(song.SongTitle), new QTableWidgetItem(song.SongMemo),
                          numberItem(QString::number(song.Marker)),
                          numberItem(QString::number(song.Bar))});
}

bool isUsed(const std::vector<EditDataShow>& shows, const QSet<std::int32_t>& songIds)
{
    return std::any_of(shows.begin(), shows.end(), [&](const EditDataShow& show) {
        return std::any_of(show.SetList.begin(), show.SetList.end(), [&](const EditDataSet& entry) {
            return songIds.contains(entry.Song.Id);
        });
    });
}

} // namespace

void EditDialog::fillSongTable()
{
    TableLook::fill(ui->tableSongList, editData->SongList, insertSongRow);
    ui->tableSongList->scrollToTop();
    ui->pushSongListDelete->setEnabled(false);
    setSongListView();
    ui->listWidgetSong->scrollToTop();
}

// Offers the titled songs for insertion, none of them selected. pushSongInsert stays as it is.
// The list stays scrolled to where the user has it.
void EditDialog::setSongListView()
{
    songListView.clear();
    std::copy_if(editData->SongList.begin(), editData->SongList.end(),
                 std::back_inserter(songListView),
                 [](const EditDataSong& song) { return !song.SongTitle.isEmpty(); });
    QStringList titles;
    int longest = 0;
    for (const EditDataSong& song : songListView) {
        titles.append(song.SongTitle);
        if (titles[longest].size() < song.SongTitle.size()) {
            longest = static_cast<int>(titles.size()) - 1;
        }
    }
    QListWidget* list = ui->listWidgetSong;
    list->clear();
    list->addItems(titles);
    // A uniform list takes its width from the last row. To measure each title of a large library
    // takes longer than a key press may.
    if (!titles.isEmpty()) {
        const QModelIndex widest = list->model()->index(longest, 0);
        list->item(list->count() - 1)->setSizeHint(list->sizeHintForIndex(widest));
    }
}

void EditDialog::on_pushSongListAdd_clicked()
{
    edit([this] {
        if (editData->MaxSongId == std::numeric_limits<std::int32_t>::max()) {
            return false; // Only a hand-edited file uses up the ids.
        }
        QTableWidget* table = ui->tableSongList;
        const int row = EditRows::selected(table, table->rowCount() - 1) + 1;
        EditDataSong song;
        song.Id = ++editData->MaxSongId;
        insertSongRow(table, row, song);
        table->item(row, kMarkerColumn)->setText(QString()); // Not a typed 0.
        table->item(row, kBarColumn)->setText(QString());
        editData->SongList.insert(editData->SongList.begin() + row, song);
        EditRows::select(table, row); // The title can be typed at once.
        return true;
    });
}

void EditDialog::on_pushSongListDelete_clicked()
{
    const std::vector<int> rows = EditRows::allSelected(ui->tableSongList);
    QSet<std::int32_t> deletedIds;
    for (const int row : rows) {
        deletedIds.insert(editData->SongList[row].Id);
    }
    const bool used = isUsed(editData->ShowList, deletedIds);
    const QString question = used ? QStringLiteral("This Song is used for SetList. Do you really "
                                                   "want to delete this?")
                                  : EditRows::kDeletion;
    editIfConfirmed(question, [&] {
        EditRows::remove(ui->tableSongList, rows, editData->SongList);
        ui->pushSongListDelete->setEnabled(ui->tableSongList->selectionModel()->hasSelection());
        if (used) {
            changeSetLists([&](std::vector<EditDataSet>& setList) {
                setList.erase(std::remove_if(setList.begin(), setList.end(),
                                             [&](const EditDataSet& entry) {
                                                 return deletedIds.contains(entry.Song.Id);
                                             }),
                              setList.end());
            });
        }
        setSongListView();
    });
}

void EditDialog::on_pushSongListAllDel_clicked()
{
    editIfConfirmed(EditRows::kDeletionOfAll, [this] {
        editData->SongList.clear();
        changeSetLists([](std::vector<EditDataSet>& setList) { setList.clear(); });
        fillSongTable();
    });
}

void EditDialog::on_tableSongList_itemSelectionChanged()
{
    changeWidgets([this] {
        ui->pushSongListDelete->setEnabled(ui->tableSongList->selectionModel()->hasSelection());
    });
}

void EditDialog::on_tableSongList_cellChanged(int row, int column)
{
    edit([=] {
        const QString text = ui->tableSongList->item(row, column)->text();
        EditDataSong& song = editData->SongList[row];
        if (column == kTitleColumn || column == kMemoColumn) {
            (column == kTitleColumn ? song.SongTitle : song.SongMemo) = text;
        } else { // A minus would reach the DAW as a key: a negative number counts as no number, 0.
            (column == kMarkerColumn ? song.Marker : song.Bar) = qMax(0, text.toInt());
        }
        setSongListView();
        changeSetLists([&song](std::vector<EditDataSet>& setList) {
            for (EditDataSet& entry : setList) {
                if (entry.SetType == kSetTypeSong && entry.Song.Id == song.Id) {
                    entry.Song = song;
                }
            }
        });
        return true;
    });
}

// Changes the set list of each show and displays the one that is shown again; it stays scrolled to
// where the user has it.
void EditDialog::changeSetLists(const std::function<void(std::vector<EditDataSet>&)>& change)
{
    for (std::size_t i = 0; i < editData->ShowList.size(); ++i) {
        std::vector<EditDataSet>& setList = editData->ShowList[i].SetList;
        change(setList);
        if (currentSetList == &setList) {
            const int scrolledTo = ui->tableSetList->verticalScrollBar()->value();
            setSetList(static_cast<int>(i));
            ui->tableSetList->verticalScrollBar()->setValue(scrolledTo);
        }
    }
}
