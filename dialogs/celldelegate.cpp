// SPDX-License-Identifier: MIT
#include "celldelegate.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>

namespace {

// The closest editable cell after (step 1) or before (step -1) a cell, row by row; invalid if
// there is none.
QModelIndex nextEditable(const QModelIndex& cell, int step, const QAbstractItemModel* model)
{
    const int columns = model->columnCount();
    const int cells = model->rowCount() * columns;
    for (int i = cell.row() * columns + cell.column() + step; i >= 0 && i < cells; i += step) {
        const QModelIndex next = model->index(i / columns, i % columns);
        if (next.flags().testFlag(Qt::ItemIsEditable)) {
            return next;
        }
    }
    return {};
}

} // namespace

CellDelegate::CellDelegate(QAbstractItemView* owner) : QStyledItemDelegate(owner), view(owner)
{
}

void CellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                const QModelIndex& index) const
{
    static const QRegularExpression lineBreak(QStringLiteral("\\R")); // CR LF is one.
    const auto* line = qobject_cast<QLineEdit*>(editor);
    if (line) {
        model->setData(index, line->text().replace(lineBreak, QStringLiteral(" ")));
    }
}

bool CellDelegate::eventFilter(QObject* object, QEvent* event)
{
    auto* editor = qobject_cast<QLineEdit*>(object);
    if (event->type() == QEvent::FocusOut &&
        static_cast<QFocusEvent*>(event)->reason() == Qt::ActiveWindowFocusReason) {
        return false;
    }
    if (!editor || event->type() != QEvent::KeyPress) {
        return QStyledItemDelegate::eventFilter(object, event);
    }
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Tab:
        goOn(editor, 1);
        return true;
    case Qt::Key_Backtab:
        goOn(editor, -1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        store(editor);
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        return false;
    default:
        if (!QStyledItemDelegate::eventFilter(object, event)) {
            object->event(event);
            event->accept(); // A key without a meaning for the cell goes no further.
        }
        return true;
    }
}

void CellDelegate::store(QWidget* editor)
{
    emit commitData(editor);
    emit closeEditor(editor);
}

void CellDelegate::goOn(QWidget* editor, int step)
{
    // The cell with the editor, which is not always the current one.
    const QPersistentModelIndex cell = view->indexAt(editor->pos());
    store(editor);
    const QModelIndex next = nextEditable(cell, step, view->model());
    if (next.isValid()) {
        view->selectionModel()->setCurrentIndex(next, QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
        view->edit(next);
    }
}
