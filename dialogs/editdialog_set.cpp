// SPDX-License-Identifier: MIT
// The displayed set list of the editor: songs and spaces, their order, names and cues.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "messageboxes.h"
#include "tablelook.h"
#include "ui_editdialog.h"

#include <QScopedValueRollback>

#include <algorithm>

using TableLook::kCueColumn;
using TableLook::kTitleColumn;

void EditDialog::on_pushSongInsert_clicked()
{
    if (isUpdating || !currentSetList) {
        return;
    }
    {
        const QScopedValueRollback<bool> updating(isUpdating, true);
        insertSongs();
    }
    on_tableSetList_itemSelectionChanged();
}

// Inserts the songs chosen in the list, in the order of the library, below the selected entry.
void EditDialog::insertSongs()
{
    std::vector<int> chosen;
    for (const QModelIndex& index : ui->listWidgetSong->selectionModel()->selectedIndexes()) {
        chosen.push_back(index.row());
    }
    std::sort(chosen.begin(), chosen.end());

    const int selected = EditRows::selected(ui->tableSetList);
    int row = selected == -1 ? ui->tableSetList->rowCount() : selected + 1;
    const TableLook::UpdatesOff updatesOff(ui->tableSetList);
    for (const int songRow : chosen) {
        EditDataSet entry;
        entry.Song = songListView[songRow];
        currentSetList->insert(currentSetList->begin() + row, entry);
        TableLook::insertEntry(ui->tableSetList, row, entry);
        ++row;
        isChanged = true;
    }
    if (!chosen.empty()) {
        ui->tableSetList->scrollToItem(ui->tableSetList->item(row - 1, kTitleColumn));
    }
    ui->listWidgetSong->clearSelection();
    ui->listWidgetSong->setFocus();
    ui->pushSongInsert->setEnabled(false);
}

void EditDialog::on_pushAddSpace_clicked()
{
    if (isUpdating || !currentSetList) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const int row = EditRows::selected(ui->tableSetList) + 1;
    EditDataSet space;
    space.SetType = kSetTypeSpace;
    TableLook::insertEntry(ui->tableSetList, row, space);
    currentSetList->insert(currentSetList->begin() + row, space);
    EditRows::select(ui->tableSetList, row);
    isChanged = true;
    ui->tableSetList->setFocus(); // The name can be typed at once.
}

void EditDialog::on_pushSetDelete_clicked()
{
    if (isUpdating || !currentSetList) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    if (!MessageBoxes::confirm(this, QStringLiteral("Do you really want to delete this?"))) {
        return;
    }
    EditRows::remove(ui->tableSetList, EditRows::allSelected(ui->tableSetList), *currentSetList);
    ui->tableSetList->setFocus();
    ui->pushSetDown->setEnabled(false);
    ui->pushSetUp->setEnabled(false);
    ui->pushSetDelete->setEnabled(false);
    isChanged = true;
}

void EditDialog::on_tableSetList_itemSelectionChanged()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const std::vector<int> rows = EditRows::allSelected(ui->tableSetList);
    const bool any = !rows.empty();
    ui->pushSetDelete->setEnabled(any);
    ui->pushSetDown->setEnabled(any && rows.back() != ui->tableSetList->rowCount() - 1);
    ui->pushSetUp->setEnabled(any && rows.front() != 0);
}

void EditDialog::on_pushSetUp_clicked()
{
    moveSelectedEntries(-1, ui->pushSetUp);
}

void EditDialog::on_pushSetDown_clicked()
{
    moveSelectedEntries(1, ui->pushSetDown);
}

// Moves each selected entry by one place and keeps it selected. The buttons are enabled only where
// all of them have a place to move to.
void EditDialog::moveSelectedEntries(int step, QPushButton* pressed)
{
    if (isUpdating || !currentSetList) {
        return;
    }
    {
        const QScopedValueRollback<bool> updating(isUpdating, true);
        QTableWidget* table = ui->tableSetList;
        const TableLook::UpdatesOff updatesOff(table);
        std::vector<int> rows = EditRows::allSelected(table);
        if (step > 0) {
            std::reverse(rows.begin(), rows.end());
        }
        for (const int row : rows) {
            std::swap((*currentSetList)[row], (*currentSetList)[row + step]);
            table->removeRow(row);
            TableLook::insertEntry(table, row + step, (*currentSetList)[row + step]);
        }
        for (const int row : rows) {
            table->setRangeSelected({row + step, kTitleColumn, row + step, kCueColumn}, true);
        }
        if (!rows.empty()) { // The foremost stays in view.
            table->setCurrentCell(rows.front() + step, kTitleColumn, QItemSelectionModel::NoUpdate);
        }
        isChanged = true;
    }
    on_tableSetList_itemSelectionChanged();
    if (!pressed->isEnabled()) {
        ui->tableSetList->setFocus();
    }
}

void EditDialog::on_tableSetList_cellChanged(int row, int column)
{
    if (isUpdating || !currentSetList) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const QString text = ui->tableSetList->item(row, column)->text();
    EditDataSet& entry = (*currentSetList)[row];
    if (column == kTitleColumn && entry.SetType == kSetTypeSpace) {
        entry.SpaceName = text;
    } else if (column == kCueColumn) {
        entry.Cue = text;
    } else {
        return;
    }
    isChanged = true;
}

void EditDialog::on_listWidgetSong_itemSelectionChanged()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    ui->pushSongInsert->setEnabled(ui->listWidgetSong->selectionModel()->hasSelection());
}
