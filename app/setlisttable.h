// SPDX-License-Identifier: MIT
#pragma once

#include "exwidgets.h"
#include "run.h"

#include <QColor>

#include <optional>

class QLineEdit;

// The table of the operator window: row i shows entry i of a set list, with the look of its state
// in the run. A row is never restyled; it is removed and inserted to change its look.
//
// A cell that is open for typing stays open, with its text, cursor, selection and the focus,
// whatever rows are redrawn and whichever row is selected meanwhile; what is typed is stored when
// the typing ends, not before. Scrolling waits for that too.
class SetListTable : public ExTableWidget
{
    Q_OBJECT

public:
    explicit SetListTable(QMainWindow* window);

    // The text colours of rows in the states SENT and NEXT, from the next inserted row on.
    void setMarkColors(const QColor& sent, const QColor& next);

    // Removes all rows and inserts those of a set list.
    void fill(const std::vector<EditDataSet>& setList, const Run& run);
    // True if the rows read like the set list.
    [[nodiscard]] bool isUpToDate(const std::vector<EditDataSet>& setList) const;
    // Where the entry of a row is in a set list that has changed, the closest to the row if there
    // are several; -1 if it has gone or there is no such row.
    [[nodiscard]] int findEntryOf(int row, const std::vector<EditDataSet>& setList) const;

    void insertSet(int row, const EditDataSet& entry, SEND_STATE state);
    // Redraws an existing row; it keeps the selection.
    void redraw(int row, const EditDataSet& entry, SEND_STATE state);

    [[nodiscard]] int selectedPos() const; // The selected row, -1 if none is.
    // Selects a row and makes its title the current cell; outside the table, selects nothing.
    void selectedRow(int row);
    // The text colour of the selected row.
    void setSelectedTextColor(const QColor& color);
    // Moves the view so that both rows are in it, and the row after them; -1 for none.
    void scrollToMarks(int sentRow, int nextRow);

    // Up or Down from a foot switch: as if pressed in the table, whatever has the focus, also while
    // a modal dialog is open. While a cell is open, only the selection moves.
    void step(Qt::Key upOrDown);

    // Ends the typing and stores what was typed.
    void storeOpenCell();

protected:
    bool event(QEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

protected slots:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    // What is being typed into a cell.
    struct Typing
    {
        QString text;
        int cursor;
        int selectionStart;
        int selectionLength; // 0: nothing is selected.
    };
    Typing suspendTyping(QLineEdit& editor); // Closes the editor without storing.
    void resumeTyping(int row, int column, const Typing& typing);

    bool isForeignRepeat(QEvent* event);

    bool isRedrawing = false;
    // The key last pressed since the typing ended. Auto-repeats of any other key are dropped: that
    // key ended the typing, is still held down, and is not for the DAW.
    int pressedKey = 0;
    int releasedKey = 0; // The last one, and when.
    unsigned long releaseTimeMs = 0;
    std::optional<std::pair<int, int>> marksToScrollTo; // When the typing ends.
    QColor sentColor;
    QColor nextColor;
};
