// SPDX-License-Identifier: MIT
#include "datafiles.h"
#include "mainwindow.h"
#include "tablelook.h"

#include <QScopedValueRollback>

#include <algorithm>

int MainWindow::getNextPos(int pos, const std::vector<EditDataSet>& setList)
{
    const std::int64_t first = std::int64_t{pos} + 1;
    if (first < 0 || first >= static_cast<std::int64_t>(setList.size())) {
        return -1;
    }
    const auto song =
        std::find_if(setList.begin() + first, setList.end(),
                     [](const EditDataSet& entry) { return entry.SetType == kSetTypeSong; });
    return song == setList.end() ? -1 : static_cast<int>(song - setList.begin());
}

void MainWindow::setOperationOn()
{
    pushEdit->setEnabled(false);
    pushPreference->setEnabled(false);
    pushReset->setEnabled(true);
    comboShowList->setEnabled(false);
    operationOn = true;
}

void MainWindow::setOperationOff()
{
    pushEdit->setEnabled(true);
    pushPreference->setEnabled(true);
    pushReset->setEnabled(false);
    comboShowList->setEnabled(true);
    operationOn = false;
    nextPos = -1;
}

void MainWindow::setSendButtonIsShow(bool show)
{
    for (ExPushButton* button :
         {sendLocate, sendDawStart, sendDawStop, send0, sendTab, sendSpace, sendEnter}) {
        button->setVisible(show);
    }
}

void MainWindow::on_sendLocate_clicked()
{
    locateSelected();
    if (!tableSetList->isEditing()) { // A double click on a space's name also opens its editor.
        giveFocusToTable();
    }
}

void MainWindow::locateSelected()
{
    const auto posToLocate = [this] {
        const int selected = selectedPos();
        return selected != -1 ? selected : sentPos;
    };
    if (tableSetList->rowCount() == 0 || (posToLocate() != -1 && !isLocatable(posToLocate()))) {
        return;
    }
    if (!isSendProcessExist()) {
        return;
    }
    if (!operationOn) {
        setOperationOn();
    }
    // Taken anew: a box may have run the event loop.
    const int pos = posToLocate();
    if (isLocatable(pos) && shownEntry(pos)->SetType == kSetTypeSong) {
        locateEntry(pos);
        if (!tableSetList->isEditing()) {
            selectedRow(pos);
        }
    }
}

// True if there is an entry and it is the one that the operator sees in this row: while the editor
// is open, the data may have moved on.
bool MainWindow::isLocatable(int pos)
{
    const EditDataSet* entry = shownEntry(pos);
    return entry && TableLook::showsEntry(tableSetList, pos, *entry);
}

// Sends the song entry at `pos` and marks it. A cell that is being edited stays so; otherwise the
// caller sets the selection, which the redrawn rows lose.
void MainWindow::locateEntry(int pos)
{
    const ExTableWidget::Cell edited = tableSetList->suspendEditing();
    unmark();
    // Storing an edit can take a show away that has no title.
    if (const EditDataSet* shown = shownEntry(pos)) {
        const EditDataSet entry = *shown;
        sendKeyEvent(entry);
        unmark(); // A message box has run the event loop, and something else was located.
        mark(pos);
    }
    tableSetList->continueEditing(edited);
}

void MainWindow::unmark()
{
    redrawRow(sentPos, NOT_SENT);
    redrawRow(nextPos, NOT_SENT);
}

// Marks the entry as sent and the song after it as next; the run ends if there is none.
void MainWindow::mark(int pos)
{
    if (!shownEntry(pos)) {
        return; // It has gone while it was being sent.
    }
    redrawRow(pos, SENT);
    sentPos = pos;
    nextPos = getNextPos(pos, *shownSetList());
    if (nextPos == -1) {
        setOperationOff();
    } else {
        redrawRow(nextPos, NEXT);
    }
}

void MainWindow::on_pushReset_clicked()
{
    const bool isNextSelected = nextPos != -1 && selectedPos() == nextPos;
    const int selected = nextPos;
    redrawRow(nextPos, NOT_SENT);
    setOperationOff();
    if (isNextSelected) {
        selectedRow(selected);
    }
    giveFocusToTable();
}

void MainWindow::on_tableSetList_doubleclicked(int row, int column)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    if (row >= 0 && column == 0) {
        sendLocate->animateClick(kClickMs);
    }
}

void MainWindow::on_tableSetList_cellChanged(int row, int column)
{
    if (inUpdate) {
        return;
    }
    const QScopedValueRollback<bool> guard(inUpdate, true);
    EditDataSet* entry = shownEntry(row);
    const QTableWidgetItem* item = tableSetList->item(row, column);
    if (!entry || !item) {
        return;
    }
    QString* stored = nullptr;
    if (column == 1) {
        stored = &entry->Cue;
    } else if (column == 0 && entry->SetType != kSetTypeSong) {
        stored = &entry->SpaceName;
    }
    if (!stored || *stored == item->text()) {
        return;
    }
    *stored = item->text();
    editData.writeEdit(setListFilePath());
    followWrittenShows();
}

// Writing removes shows without a title from the data, which the selector then still lists.
void MainWindow::followWrittenShows()
{
    for (int i = comboShowList->count() - 1; i >= 0; --i) {
        if (comboShowList->itemText(i).isEmpty() && i != comboShowList->currentIndex()) {
            comboShowList->removeItem(i);
        }
    }
    if (comboShowList->count() != static_cast<int>(editData.ShowList.size())) {
        // Not at once: the cell whose edit led here is in the middle of its own handling.
        QMetaObject::invokeMethod(this, &MainWindow::setShowData, Qt::QueuedConnection);
    }
}
