// SPDX-License-Identifier: MIT
#include "editdialog_rows.h"

#include <algorithm>

namespace EditRows {

int selected(const QTableWidget* table, int otherwise)
{
    const auto items = table->selectedItems();
    return items.isEmpty() ? otherwise : items.first()->row();
}

std::vector<int> allSelected(const QAbstractItemView* view)
{
    std::vector<int> rows;
    for (const QModelIndex& index : view->selectionModel()->selectedRows()) {
        rows.push_back(index.row());
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

void select(QTableWidget* table, int row)
{
    table->selectRow(row); // Where a later Shift+click begins; but it heeds keys held down now.
    table->setCurrentCell(row, 0, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    table->setFocus();
}

} // namespace EditRows
