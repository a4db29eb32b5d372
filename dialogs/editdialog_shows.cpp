// SPDX-License-Identifier: MIT
// The show list of the editor, and which show's set list is displayed.
#include "editdialog.h"

#include "editdialog_rows.h"
#include "ui_editdialog.h"

namespace {

constexpr int kMemoColumn = 1;

void insertShowRow(QTableWidget* table, int row, const EditDataShow& show)
{
    TableLook::insertRow(
        table, row, {new QTableWidgetItem(show.ShowTitle), new QTableWidgetItem(show.ShowMemo)});
}

} // namespace

void EditDialog::fillShowTable()
{
    TableLook::fill(ui->tableShowList, editData->ShowList, insertShowRow);
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
    setEntryButtons({});
    const bool isShown = showIndex >= 0;
    ui->pushAddSpace->setEnabled(isShown);
    ui->listWidgetSong->setEnabled(isShown);
    ui->tableSetList->setEnabled(isShown);
    ui->pushSongInsert->setEnabled(isShown && ui->listWidgetSong->selectionModel()->hasSelection());
    currentSetList = isShown ? &editData->ShowList[showIndex].SetList : nullptr;
    const std::vector<EditDataSet> none;
    TableLook::fill(ui->tableSetList, isShown ? *currentSetList : none, TableLook::insertEntry);
    ui->tableSetList->scrollToTop();
}

// Inserts a show in table and data, selects it and displays its set list.
void EditDialog::insertShow(int row, const EditDataShow& show)
{
    insertShowRow(ui->tableShowList, row, show);
    editData->ShowList.insert(editData->ShowList.begin() + row, show);
    EditRows::select(ui->tableShowList, row); // The title can be typed at once.
    setSetList(row);
}

void EditDialog::on_pushShowListAdd_clicked()
{
    edit([this] {
        insertShow(EditRows::selected(ui->tableShowList) + 1, EditDataShow());
        return true;
    });
}

void EditDialog::on_pushShowListDuplicate_clicked()
{
    edit([this] {
        const int row = EditRows::selected(ui->tableShowList);
        if (row != -1) {
            insertShow(row + 1, EditDataShow(editData->ShowList[row]));
        }
        return row != -1;
    });
}

void EditDialog::on_pushShowListDelete_clicked()
{
    const int row = EditRows::selected(ui->tableShowList);
    if (row == -1) {
        return;
    }
    editIfConfirmed(EditRows::kDeletion, [=] {
        EditRows::remove(ui->tableShowList, {row}, editData->ShowList);
        const int last = ui->tableShowList->rowCount() - 1;
        setShowButtonsEnabled(last >= 0);
        setSetList(qMin(row, last));
    });
}

void EditDialog::on_pushShowListAllDel_clicked()
{
    editIfConfirmed(EditRows::kDeletionOfAll, [this] {
        editData->ShowList.clear();
        fillShowTable();
    });
}

void EditDialog::on_tableShowList_currentCellChanged(int currentRow, int /*currentColumn*/,
                                                     int previousRow, int /*previousColumn*/)
{
    changeWidgets([=] {
        if (currentRow == -1 || currentRow != previousRow) {
            setSetList(currentRow);
        }
        setShowButtonsEnabled(currentRow != -1);
    });
}

void EditDialog::on_tableShowList_cellChanged(int row, int column)
{
    edit([=] {
        EditDataShow& show = editData->ShowList[row];
        QString& field = column == kMemoColumn ? show.ShowMemo : show.ShowTitle;
        field = ui->tableShowList->item(row, column)->text();
        return true;
    });
}
