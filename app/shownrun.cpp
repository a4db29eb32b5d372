// SPDX-License-Identifier: MIT
#include "shownrun.h"

#include "daw.h"
#include "runcontrols.h"
#include "sendpanel.h"
#include "setlisttable.h"
#include "tablelook.h"

#include <set>
#include <utility>

ShownRun::ShownRun(EditData& data, RunControls& runControls, SetListTable& setListTable,
                   ExPushButton& locate, Daw& drivenDaw)
    : editData(data), controls(runControls), table(setListTable), sendLocate(locate), daw(drivenDaw)
{
}

void ShownRun::showFirst()
{
    end(); // Its marks go with the rows.
    controls.comboShowList->list(editData.ShowList);
}

void ShownRun::showSelected()
{
    if (controls.comboShowList->currentIndex() != -1) {
        run = {};
    }
    fillTable();
    table.selectedRow(0);
}

void ShownRun::showChanges()
{
    ShowSelector& selector = *controls.comboShowList;
    const std::vector<EditDataSet>* entries = setList();
    if (!entries && !selector.isUpToDate(editData.ShowList)) {
        showFirst();
    }
    if (!entries) {
        return;
    }
    if (!selector.isUpToDate(editData.ShowList)) {
        selector.listQuietly(editData.ShowList, selector.indexOfSelected(editData.ShowList));
    }
    if (table.isUpToDate(*entries)) {
        return;
    }
    const int selected = table.findEntryOf(table.selectedPos(), *entries);
    run = run.moved(table.findEntryOf(run.sentPos, *entries),
                    table.findEntryOf(run.nextPos, *entries), *entries);
    controls.setRunning(run.operationOn);
    fillTable();
    table.selectedRow(selected == -1 ? 0 : selected);
}

void ShownRun::fillTable()
{
    const std::vector<EditDataSet>* entries = setList();
    table.fill(entries ? *entries : std::vector<EditDataSet>(), run);
    SendPanel::setSendButtonEnabled(&sendLocate, table.rowCount() > 0);
}

std::vector<EditDataSet>* ShownRun::setList()
{
    const int show = controls.comboShowList->indexOfSelected(editData.ShowList);
    return show == -1 ? nullptr : &editData.ShowList[static_cast<std::size_t>(show)].SetList;
}

EditDataSet* ShownRun::entryAt(int pos)
{
    std::vector<EditDataSet>* entries = setList();
    const bool isThere = entries && pos >= 0 && pos < static_cast<int>(entries->size());
    return isThere ? &(*entries)[static_cast<std::size_t>(pos)] : nullptr;
}

EditDataSet* ShownRun::entryOfRow(int row)
{
    EditDataSet* entry = entryAt(row);
    return entry && TableLook::isEntryOf(&table, row, *entry) ? entry : nullptr;
}

bool ShownRun::isSong(int row)
{
    const EditDataSet* entry = entryOfRow(row);
    return entry && entry->SetType == kSetTypeSong;
}

void ShownRun::locateSelected()
{
    const auto posToLocate = [this] { return run.posToLocate(table.selectedPos()); };
    if (table.rowCount() == 0 || (posToLocate() != -1 && !entryOfRow(posToLocate())) ||
        !daw.isSendProcessExist()) {
        return;
    }
    setRun(run.begun());
    const int pos = posToLocate(); // Asked again: a box may have run the event loop.
    if (isSong(pos)) {
        locateEntry(pos, pos);
    }
}

void ShownRun::locateNext()
{
    // The process is known since the run began, unless preferences were confirmed since. A run that
    // began on a space has no next entry.
    if (isSong(run.nextPos) && daw.findProcess()) {
        locateEntry(run.nextPos, table.selectedPos());
    }
}

void ShownRun::locateEntry(int pos, int rowToSelect)
{
    redrawRow(run.sentPos, NOT_SENT);
    redrawRow(run.nextPos, NOT_SENT);
    const EditDataSet entry = *entryOfRow(pos);
    daw.sendKeyEvent(entry);
    if (entryOfRow(pos)) {
        setRun(run.located(pos, *setList()));
        table.selectedRow(rowToSelect);
        table.scrollToMarks(run.sentPos, run.nextPos);
    }
}

void ShownRun::setRun(const Run& now)
{
    const Run before = std::exchange(run, now);
    for (const int row : std::set{before.sentPos, before.nextPos, now.sentPos, now.nextPos}) {
        redrawRow(row, now.stateOf(row));
    }
    controls.setRunning(now.operationOn);
    colorSelection();
}

void ShownRun::redrawRow(int row, SEND_STATE state)
{
    if (const EditDataSet* entry = entryOfRow(row)) {
        table.redraw(row, *entry, state);
    }
}

void ShownRun::colorSelection()
{
    const SEND_STATE state = run.stateOf(table.selectedPos());
    table.setSelectedTextColor(state == SENT   ? editData.SendTextColor
                               : state == NEXT ? editData.NextTextColor
                                               : TableLook::kSelectedText);
}

bool ShownRun::takeTyped(int row, int column)
{
    EditDataSet* entry = entryAt(row); // A space's row has its new name already.
    const QTableWidgetItem* item = table.item(row, column);
    if (!entry || !item) {
        return false;
    }
    QString* stored = nullptr;
    if (column == TableLook::kCueColumn) {
        stored = &entry->Cue;
    } else if (column == TableLook::kTitleColumn && entry->SetType != kSetTypeSong) {
        stored = &entry->SpaceName;
    }
    if (!stored || *stored == item->text()) {
        return false;
    }
    *stored = item->text();
    return true;
}
