// SPDX-License-Identifier: MIT
#include "exwidgets.h"

#include <QLineEdit>
#include <QWheelEvent>

namespace {

constexpr int kCueColumn = 1;

} // namespace

template <typename Base>
void ExWidget<Base>::keyPressEvent(QKeyEvent* event)
{
    if (owner) {
        owner->onKeyEvent(event);
    }
}

template <typename Base>
void ExWidget<Base>::focusInEvent(QFocusEvent*)
{
    setFocusFlag(true);
}

template <typename Base>
void ExWidget<Base>::focusOutEvent(QFocusEvent*)
{
    setFocusFlag(false);
}

template <typename Base>
void ExWidget<Base>::setFocusFlag(bool hasFocus)
{
    focusFlag = hasFocus;
    if (owner) {
        owner->onFocus();
    }
}

template class ExWidget<QPushButton>;
template class ExWidget<QComboBox>;
template class ExWidget<QCheckBox>;
template class ExWidget<QTableWidget>;

void ExPushButton::focusInEvent(QFocusEvent* event)
{
    if (owner && text() == QLatin1String("Edit")) {
        owner->giveFocusToTable();
        return;
    }
    ExWidget::focusInEvent(event);
}

void ExPushButton::keyReleaseEvent(QKeyEvent*)
{
    // The toolkit would click a button that the window's own click animation holds down.
}

void ExComboBox::showPopup()
{
    QComboBox::showPopup();
    isListOpen = true;
}

void ExComboBox::hidePopup() // The toolkit calls this in other cases too.
{
    QComboBox::hidePopup();
    if (isListOpen && owner) {
        owner->giveFocusToTable();
    }
    isListOpen = false;
}

void ExComboBox::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

ExTableWidget::Cell ExTableWidget::suspendEditing()
{
    QWidget* editor = isEditing() ? indexWidget(currentIndex()) : nullptr;
    if (!editor) {
        return {};
    }
    const Cell cell{currentRow(), currentColumn()};
    commitData(editor);
    closeEditor(editor, QAbstractItemDelegate::NoHint);
    return cell;
}

void ExTableWidget::continueEditing(const Cell& cell)
{
    if (cell.row == -1 || !item(cell.row, cell.column)) {
        return;
    }
    setCurrentCell(cell.row, cell.column);
    editItem(item(cell.row, cell.column));
    if (auto* editor = qobject_cast<QLineEdit*>(indexWidget(currentIndex()))) {
        editor->end(false);
    }
}

void ExTableWidget::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool moves = key == Qt::Key_Up || key == Qt::Key_Down;
    const bool isForWindow = key == Qt::Key_Tab || key == Qt::Key_Left || key == Qt::Key_Right;
    const bool editsCue = currentColumn() == kCueColumn && owner && !owner->isOperationOn();
    if (moves || (editsCue && !isForWindow)) {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): past the routing to the window
        QTableWidget::keyPressEvent(event);
    } else {
        ExWidget::keyPressEvent(event);
    }
}
