// SPDX-License-Identifier: MIT
// The displayed set list of the editor: songs and spaces, their order, names and cues.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "ui_editdialog.h"

#include <algorithm>

using TableLook::kCueColumn;
using TableLook::kTitleColumn;

// Inserts the songs chosen in the list, in the order of the library, below the selected entry.
void EditDialog::on_pushSongInsert_clicked()
{
    edit([this] {
        const std::vector<int> chosen = EditRows::allSelected(ui->listWidgetSong);
        int row = EditRows::selected(ui->tableSetList, ui->tableSetList->rowCount() - 1);
        const TableLook::UpdatesOff updatesOff(ui->tableSetList);
        for (const int songRow : chosen) {
            EditDataSet entry;
            entry.Song = songListView[songRow];
            ++row;
            currentSetList->insert(currentSetList->begin() + row, entry);
            TableLook::insertEntry(ui->tableSetList, row, entry);
        }
        ui->tableSetList->scrollTo(ui->tableSetList->model()->index(row, kTitleColumn));
        ui->listWidgetSong->clearSelection();
        ui->listWidgetSong->setFocus();
        ui->pushSongInsert->setEnabled(false);
        return !chosen.empty();
    });
    on_tableSetList_itemSelectionChanged();
}

void EditDialog::on_pushAddSpace_clicked()
{
    edit([this] {
        const int row = EditRows::selected(ui->tableSetList) + 1;
        EditDataSet space;
        space.SetType = kSetTypeSpace;
        TableLook::insertEntry(ui->tableSetList, row, space);
        currentSetList->insert(currentSetList->begin() + row, space);
        EditRows::select(ui->tableSetList, row); // The name can be typed at once.
        return true;
    });
}

void EditDialog::on_pushSetDelete_clicked()
{
    editIfConfirmed(EditRows::kDeletion, [this] {
        EditRows::remove(ui->tableSetList, EditRows::allSelected(ui->tableSetList),
                         *currentSetList);
        setEntryButtons({});
    });
}

void EditDialog::on_tableSetList_itemSelectionChanged()
{
    changeWidgets([this] { setEntryButtons(EditRows::allSelected(ui->tableSetList)); });
}

void EditDialog::setEntryButtons(const std::vector<int>& selectedRows)
{
    const bool any = !selectedRows.empty();
    ui->pushSetDelete->setEnabled(any);
    ui->pushSetDown->setEnabled(any && selectedRows.back() != ui->tableSetList->rowCount() - 1);
    ui->pushSetUp->setEnabled(any && selectedRows.front() != 0);
}

// Moves each selected entry by one place and keeps it selected. The buttons are enabled only where
// all of them have a place to move to.
void EditDialog::moveSelectedEntries(int step)
{
    edit([this, step] {
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
        return true;
    });
    on_tableSetList_itemSelectionChanged();
    if (!(step < 0 ? ui->pushSetUp : ui->pushSetDown)->isEnabled()) {
        ui->tableSetList->setFocus();
    }
}

void EditDialog::on_tableSetList_cellChanged(int row, int column)
{
    edit([=] {
        const QString text = ui->tableSetList->item(row, column)->text();
        EditDataSet& entry = (*currentSetList)[row];
        if (column == kCueColumn) {
            entry.Cue = text;
        } else if (entry.SetType == kSetTypeSpace) {
            entry.SpaceName = text;
        } else {
            return false;
        }
        return true;
    });
}

void EditDialog::on_listWidgetSong_itemSelectionChanged()
{
    changeWidgets([this] {
        ui->pushSongInsert->setEnabled(ui->listWidgetSong->selectionModel()->hasSelection());
    });
}
