// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

class QAbstractItemView;

// The typing in the cells of all tables; TableLook::styleTable() installs it.
//
// Tab and Shift+Tab store the cell and open the next or previous editable one with its text
// selected; after the last (before the first) the focus stays on the table. Return and Enter store
// the cell. It stays open while another window is in front. Line breaks of a pasted text are stored
// as blanks. No key that is pressed in an open cell reaches the table or its window, except Up,
// Down, Page Up and Page Down, which move to another row.
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit CellDelegate(QAbstractItemView* owner);

    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void store(QWidget* editor);
    void goOn(QWidget* editor, int step);

    QAbstractItemView* view;
};
