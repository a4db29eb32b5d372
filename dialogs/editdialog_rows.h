// SPDX-License-Identifier: MIT
#pragma once

#include "tablelook.h"

// The rows of the editor's tables: which are selected, and taking them out.
namespace EditRows {

// The questions before rows are removed.
inline const QString kDeletion = QStringLiteral("Do you really want to delete this?");
inline const QString kDeletionOfAll = QStringLiteral("Do you really want to delete all?");

// The row of the first selected item, in the order in which the user selected; `otherwise` if none
// is.
int selected(const QTableWidget* table, int otherwise = -1);

// Every selected row once, ascending.
std::vector<int> allSelected(const QAbstractItemView* view);

// Selects this row alone, whatever keys are held down, makes its first cell current, and gives the
// table the focus.
void select(QTableWidget* table, int row);

// Removes the rows, given ascending, from the table, and the elements at the same places from the
// list that it shows; gives the table the focus.
template <typename Element>
void remove(QTableWidget* table, const std::vector<int>& rows, std::vector<Element>& list)
{
    const TableLook::UpdatesOff updatesOff(table);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        table->removeRow(*row);
        list.erase(list.begin() + *row);
    }
    table->setFocus();
}

} // namespace EditRows
