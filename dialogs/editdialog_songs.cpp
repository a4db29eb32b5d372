// SPDX-License-Identifier: MIT
// The song library of the editor. Set-list entries carry copies of their songs; they are kept in
// step here.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "messageboxes.h"
#include "tablelook.h"
#include "ui_editdialog.h"

#include <QHash>
#include <QScopedValueRollback>
#include <QSet>
#include <QStyledItemDelegate>

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

void insertSongRow(QTableWidget* table, int row, const EditDataSong& song, const QString& marker,
                   const QString& bar)
{
    TableLook::insertRow(table, row);
    table->setItem(row, kTitleColumn, new QTableWidgetItem(song.SongTitle));
    table->setItem(row, kMemoColumn, new QTableWidgetItem(song.SongMemo));
    table->setItem(row, kMarkerColumn, numberItem(marker));
    table->setItem(row, kBarColumn, numberItem(bar));
}

// The bar or marker that a text stands for. A minus would reach the DAW as a key, so a negative
// number counts as no number: 0.
std::int32_t toPosition(const QString& text)
{
    return qMax(0, text.toInt());
}

bool isUsed(const std::vector<EditDataShow>& shows, const QSet<std::int32_t>& songIds)
{
    return std::any_of(shows.begin(), shows.end(), [&](const EditDataShow& show) {
        return std::any_of(show.SetList.begin(), show.SetList.end(), [&](const EditDataSet& entry) {
            return songIds.contains(entry.Song.Id);
        });
    });
}

void removeEntriesOf(const QSet<std::int32_t>& songIds, std::vector<EditDataSet>& setList)
{
    setList.erase(
        std::remove_if(setList.begin(), setList.end(),
                       [&](const EditDataSet& entry) { return songIds.contains(entry.Song.Id); }),
        setList.end());
}

// Measures each title once. A list lays itself out anew whenever one title changes, and measuring
// the titles of a large library takes longer than a key press may.
class TitleDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        if (option.font != measuredFont) {
            measuredFont = option.font;
            sizes.clear();
        }
        QSize& size = sizes[index.data().toString()];
        if (!size.isValid()) {
            size = QStyledItemDelegate::sizeHint(option, index);
        }
        return size;
    }

private:
    mutable QFont measuredFont;
    mutable QHash<QString, QSize> sizes;
};

// Gives a list widget one item for each song. Rows that stay the same at the beginning and at the
// end are kept, so that a large library is not listed anew for each title that is typed.
void showTitles(QListWidget* list, const std::vector<EditDataSong>& songs)
{
    const int oldCount = list->count();
    const int newCount = static_cast<int>(songs.size());
    const int common = qMin(oldCount, newCount);
    int head = 0;
    while (head < common && list->item(head)->text() == songs[head].SongTitle) {
        ++head;
    }
    int tail = 0;
    while (tail < common - head &&
           list->item(oldCount - 1 - tail)->text() == songs[newCount - 1 - tail].SongTitle) {
        ++tail;
    }
    list->model()->removeRows(head, oldCount - head - tail);
    QStringList titles;
    std::transform(songs.begin() + head, songs.end() - tail, std::back_inserter(titles),
                   [](const EditDataSong& song) { return song.SongTitle; });
    list->insertItems(head, titles);
}

} // namespace

void EditDialog::setUpSongListView()
{
    TableLook::stylePaper(ui->listWidgetSong);
    ui->listWidgetSong->setItemDelegate(new TitleDelegate(ui->listWidgetSong));
}

void EditDialog::fillSongTable()
{
    {
        const TableLook::Refill refill(ui->tableSongList);
        int row = 0;
        for (const EditDataSong& song : editData->SongList) {
            insertSongRow(ui->tableSongList, row++, song, QString::number(song.Marker),
                          QString::number(song.Bar));
        }
    }
    ui->tableSongList->scrollToTop();
    ui->pushSongListDelete->setEnabled(false);
    setSongListView();
    ui->listWidgetSong->scrollToTop();
}

// Offers the titled songs for insertion, none of them selected. pushSongInsert stays as it is.
void EditDialog::setSongListView()
{
    songListView.clear();
    std::copy_if(editData->SongList.begin(), editData->SongList.end(),
                 std::back_inserter(songListView),
                 [](const EditDataSong& song) { return !song.SongTitle.isEmpty(); });
    showTitles(ui->listWidgetSong, songListView);
    ui->listWidgetSong->selectionModel()->clear();
}

void EditDialog::on_pushSongListAdd_clicked()
{
    if (isUpdating || editData->MaxSongId == std::numeric_limits<std::int32_t>::max()) {
        return; // Only a hand-edited file uses up the ids.
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const int selected = EditRows::selected(ui->tableSongList);
    const int row = selected == -1 ? ui->tableSongList->rowCount() : selected + 1;
    EditDataSong song;
    song.Id = ++editData->MaxSongId;
    insertSongRow(ui->tableSongList, row, song, QString(), QString());
    editData->SongList.insert(editData->SongList.begin() + row, song);
    EditRows::select(ui->tableSongList, row);
    isChanged = true;
    ui->tableSongList->setFocus(); // The title can be typed at once.
}

void EditDialog::on_pushSongListDelete_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const std::vector<int> rows = EditRows::allSelected(ui->tableSongList);
    QSet<std::int32_t> deletedIds;
    for (const int row : rows) {
        deletedIds.insert(editData->SongList[row].Id);
    }
    const bool used = isUsed(editData->ShowList, deletedIds);
    if (!MessageBoxes::confirm(
            this, used ? QStringLiteral("This Song is used for SetList. Do you really want to "
                                        "delete this?")
                       : QStringLiteral("Do you really want to delete this?"))) {
        return;
    }
    EditRows::remove(ui->tableSongList, rows, editData->SongList);
    ui->tableSongList->setFocus();
    if (!ui->tableSongList->selectionModel()->hasSelection()) {
        ui->pushSongListDelete->setEnabled(false);
    }
    isChanged = true;
    if (used) {
        for (int i = 0; i < static_cast<int>(editData->ShowList.size()); ++i) {
            removeEntriesOf(deletedIds, editData->ShowList[i].SetList);
            redisplaySetListOf(i);
        }
    }
    setSongListView();
}

void EditDialog::on_pushSongListAllDel_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    if (!MessageBoxes::confirm(this, QStringLiteral("Do you really want to delete all?"))) {
        return;
    }
    editData->SongList.clear();
    ui->tableSongList->setRowCount(0);
    ui->pushSongListDelete->setEnabled(false);
    isChanged = true;
    for (int i = 0; i < static_cast<int>(editData->ShowList.size()); ++i) {
        editData->ShowList[i].SetList.clear();
        redisplaySetListOf(i);
    }
    setSongListView();
}

void EditDialog::on_tableSongList_itemSelectionChanged()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    ui->pushSongListDelete->setEnabled(ui->tableSongList->selectionModel()->hasSelection());
}

void EditDialog::on_tableSongList_cellChanged(int row, int column)
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const QString text = ui->tableSongList->item(row, column)->text();
    EditDataSong& song = editData->SongList[row];
    switch (column) {
    case kTitleColumn:
        song.SongTitle = text;
        break;
    case kMemoColumn:
        song.SongMemo = text;
        break;
    case kMarkerColumn:
        song.Marker = toPosition(text);
        break;
    case kBarColumn:
        song.Bar = toPosition(text);
        break;
    default:
        break;
    }
    isChanged = true;
    setSongListView();
    copySongToSetLists(song);
}

void EditDialog::copySongToSetLists(const EditDataSong& song)
{
    for (int i = 0; i < static_cast<int>(editData->ShowList.size()); ++i) {
        for (EditDataSet& entry : editData->ShowList[i].SetList) {
            if (entry.SetType == kSetTypeSong && entry.Song.Id == song.Id) {
                entry.Song = song;
            }
        }
        redisplaySetListOf(i);
    }
}
