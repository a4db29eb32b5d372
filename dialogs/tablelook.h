// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QHeaderView>
#include <QTableWidget>

#include <initializer_list>
#include <vector>

struct EditDataSet;

// The one look of all tables, and how a row is filled with a set-list entry.
namespace TableLook {

// The columns of a table that shows a set list.
constexpr int kTitleColumn = 0; // A song's title or a space's name.
constexpr int kCueColumn = 1;

inline const QColor kSelectedText(Qt::black);

// White paper with black text, whatever the desktop's colours are and in all states of the window,
// so that the colours of rows can be read.
void stylePaper(QWidget* widget);

// Paper, with the selection's colours painted flat whatever the desktop's style does with
// selections. Cells are edited by a CellDelegate.
void styleTable(QTableWidget* table);

// White on flat dark teal; sections do not follow the selection.
void styleHeader(QHeaderView* header);

// Inserts a row of the standard height; the table owns the cells.
void insertRow(QTableWidget* table, int row, std::initializer_list<QTableWidgetItem*> cells);

// Inserts a row at `row` for one entry. Song titles cannot be edited in place; spaces are black on
// grey with a centred, editable name. The items are default-styled otherwise.
void insertEntry(QTableWidget* table, int row, const EditDataSet& entry);

// True if the row was inserted for this entry: same kind and song Id, or same space name.
bool isEntryOf(const QTableWidget* table, int row, const EditDataSet& entry);

// True if the row reads like the entry: same kind, same texts.
bool showsEntry(const QTableWidget* table, int row, const EditDataSet& entry);

// Keeps a table from laying itself out after each of many rows that are inserted or removed.
class UpdatesOff
{
public:
    explicit UpdatesOff(QTableWidget* changed) : table(changed) { table->setUpdatesEnabled(false); }
    ~UpdatesOff() { table->setUpdatesEnabled(true); }
    Q_DISABLE_COPY_MOVE(UpdatesOff)

private:
    QTableWidget* table;
};

// Replaces all rows of a table by one for each element, by insert(table, row, element).
template <typename Element, typename Insert>
void fill(QTableWidget* table, const std::vector<Element>& elements, const Insert& insert)
{
    const UpdatesOff updatesOff(table); // Else it takes quadratic time.
    table->setRowCount(0);
    int row = 0;
    for (const Element& element : elements) {
        insert(table, row++, element);
    }
}

} // namespace TableLook
