// SPDX-License-Identifier: MIT
// The show list of the editor, and which show's set list is displayed.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "messageboxes.h"
#include "tablelook.h"
#include "ui_editdialog.h"

#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

constexpr int kTitleColumn = 0;
constexpr int kMemoColumn = 1;

void insertShowRow(QTableWidget* table, int row, const EditDataShow& show)
{
    TableLook::insertRow(table, row);
    table->setItem(row, kTitleColumn, new QTableWidgetItem(show.ShowTitle));
    table->setItem(row, kMemoColumn, new QTableWidgetItem(show.ShowMemo));
}

} // namespace

void EditDialog::fillShowTable()
{
    {
        const TableLook::Refill refill(ui->tableShowList);
        int row = 0;
        for (const EditDataShow& show : editData->ShowList) {
            insertShowRow(ui->tableShowList, row++, show);
        }
    }
    const bool hasShows = !editData->ShowList.empty();
    if (hasShows) {
        EditRows::select(ui->tableShowList, 0);
    }
    setShowButtonsEnabled(hasShows);
    setSetList(hasShows ? 0 : -1);
}

void EditDialog::setShowButtonsEnabled(bool enabled)
{
    ui->pushShowListDelete->setEnabled(enabled);
    ui->pushShowListDuplicate->setEnabled(enabled);
}

void EditDialog::setSetList(int showIndex)
{
    const TableLook::Refill refill(ui->tableSetList);
    ui->pushSetUp->setEnabled(false);
    ui->pushSetDown->setEnabled(false);
    ui->pushSetDelete->setEnabled(false);

    const bool isShown = showIndex >= 0;
    ui->pushAddSpace->setEnabled(isShown);
    ui->listWidgetSong->setEnabled(isShown);
    ui->tableSetList->setEnabled(isShown);
    ui->pushSongInsert->setEnabled(isShown && ui->listWidgetSong->selectionModel()->hasSelection());
    currentSetList = nullptr;
    if (showIndex >= 0) {
        currentSetList = &editData->ShowList[showIndex].SetList;
        int row = 0;
        for (const EditDataSet& entry : *currentSetList) {
            TableLook::insertEntry(ui->tableSetList, row++, entry);
        }
    }
    ui->tableSetList->scrollToTop();
}

// Displays a show's set list anew after its songs have changed, if it is the one displayed; it
// stays scrolled to where the user has it.
void EditDialog::redisplaySetListOf(int showIndex)
{
    if (currentSetList != &editData->ShowList[showIndex].SetList) {
        return;
    }
    const int scrolledTo = ui->tableSetList->verticalScrollBar()->value();
    setSetList(showIndex);
    ui->tableSetList->verticalScrollBar()->setValue(scrolledTo);
}

// Inserts a show in table and data, selects it and displays its set list.
void EditDialog::insertShow(int row, const EditDataShow& show)
{
    insertShowRow(ui->tableShowList, row, show);
    editData->ShowList.insert(editData->ShowList.begin() + row, show);
    EditRows::select(ui->tableShowList, row);
    setSetList(row);
    isChanged = true;
    ui->tableShowList->setFocus(); // The title can be typed at once.
}

void EditDialog::on_pushShowListAdd_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    insertShow(EditRows::selected(ui->tableShowList) + 1, EditDataShow());
}

void EditDialog::on_pushShowListDuplicate_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const int row = EditRows::selected(ui->tableShowList);
    if (row != -1) {
        const EditDataShow copy = editData->ShowList[row];
        insertShow(row + 1, copy);
    }
}

void EditDialog::on_pushShowListDelete_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const int row = EditRows::selected(ui->tableShowList);
    if (row == -1 ||
        !MessageBoxes::confirm(this, QStringLiteral("Do you really want to delete this?"))) {
        return;
    }
    EditRows::remove(ui->tableShowList, {row}, editData->ShowList);
    ui->tableShowList->setFocus();
    const int count = ui->tableShowList->rowCount();
    if (count == 0) {
        setShowButtonsEnabled(false);
    }
    setSetList(row < count ? row : row - 1);
    isChanged = true;
}

void EditDialog::on_pushShowListAllDel_clicked()
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    if (!MessageBoxes::confirm(this, QStringLiteral("Do you really want to delete all?"))) {
        return;
    }
    editData->ShowList.clear();
    ui->tableShowList->setRowCount(0);
    setShowButtonsEnabled(false);
    setSetList(-1);
    isChanged = true;
}

void EditDialog::on_tableShowList_currentCellChanged(int currentRow, int /*currentColumn*/,
                                                     int previousRow, int /*previousColumn*/)
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    if (currentRow == -1 || currentRow != previousRow) {
        setSetList(currentRow);
    }
    setShowButtonsEnabled(currentRow != -1);
}

void EditDialog::on_tableShowList_cellChanged(int row, int column)
{
    if (isUpdating) {
        return;
    }
    const QScopedValueRollback<bool> updating(isUpdating, true);
    const QString text = ui->tableShowList->item(row, column)->text();
    EditDataShow& show = editData->ShowList[row];
    if (column == kTitleColumn) {
        show.ShowTitle = text;
    } else if (column == kMemoColumn) {
        show.ShowMemo = text;
    } else {
        return;
    }
    isChanged = true;
}
