// SPDX-License-Identifier: MIT
#include "setlisttable.h"

#include "tablelook.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QSignalBlocker>

#include <algorithm>
#include <cstdlib>
#include <utility>

SetListTable::SetListTable(QMainWindow* window) : ExTableWidget(window)
{
    TableLook::styleTable(this);
    setColumnCount(2);
    setHorizontalHeaderLabels({QCoreApplication::translate("MainWindow", "SongTitle"),
                               QCoreApplication::translate("MainWindow", "Cue")});
    TableLook::styleHeader(horizontalHeader());
    horizontalHeader()->setStretchLastSection(true);
    verticalHeader()->hide();
    setSelectionMode(QAbstractItemView::SingleSelection);
    setAccessibleName(QCoreApplication::translate("MainWindow", "Set list"));
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void SetListTable::setMarkColors(const QColor& sent, const QColor& next)
{
    sentColor = sent;
    nextColor = next;
}

void SetListTable::fill(const std::vector<EditDataSet>& setList, const Run& run)
{
    TableLook::fill(this, setList, [&](QTableWidget*, int row, const EditDataSet& entry) {
        insertSet(row, entry, run.stateOf(row));
    });
}

bool SetListTable::isUpToDate(const std::vector<EditDataSet>& setList) const
{
    int row = 0;
    return rowCount() == static_cast<int>(setList.size()) &&
           std::all_of(setList.begin(), setList.end(), [&](const EditDataSet& entry) {
               return TableLook::showsEntry(this, row++, entry);
           });
}

int SetListTable::findEntryOf(int row, const std::vector<EditDataSet>& setList) const
{
    int closest = -1;
    for (int pos = 0; row >= 0 && pos < static_cast<int>(setList.size()); ++pos) {
        const bool isCloser = closest == -1 || std::abs(pos - row) < std::abs(closest - row);
        if (isCloser && TableLook::isEntryOf(this, row, setList[static_cast<std::size_t>(pos)])) {
            closest = pos;
        }
    }
    return closest;
}

void SetListTable::insertSet(int row, const EditDataSet& entry, SEND_STATE state)
{
    TableLook::insertEntry(this, row, entry);
    if (entry.SetType == kSetTypeSpace || state == NOT_SENT) {
        return;
    }
    QFont emphasis;
    emphasis.setBold(true);
    emphasis.setItalic(true);
    for (int column = 0; column < columnCount(); ++column) {
        item(row, column)->setForeground(QBrush(state == SENT ? sentColor : nextColor));
        item(row, column)->setFont(emphasis);
    }
}

void SetListTable::redraw(int row, const EditDataSet& entry, SEND_STATE state)
{
    const QScopedValueRollback<bool> guard(isRedrawing, true);
    const QSignalBlocker noSignals(this); // The operator edits and selects nothing here.
    const bool autoScroll = hasAutoScroll();
    setAutoScroll(false);

    const int column = currentColumn();
    const bool isCurrent = currentRow() == row;
    const QModelIndexList selected = selectedIndexes();
    const int selectedColumn = selected.isEmpty() ? -1 : selected.first().column();
    const int selectedRow = selected.isEmpty() ? -1 : selected.first().row();
    auto* editor = qobject_cast<QLineEdit*>(openEditor());
    const auto typing = editor && isCurrent ? std::optional(suspendTyping(*editor)) : std::nullopt;

    removeRow(row);
    insertSet(row, entry, state);
    if (isCurrent) {
        setCurrentCell(row, column, QItemSelectionModel::NoUpdate);
    }
    selectionModel()->select(model()->index(selectedRow, selectedColumn),
                             QItemSelectionModel::ClearAndSelect);
    if (typing) {
        resumeTyping(row, column, *typing);
    } else if (editor) {
        setState(EditingState); // Removing another row has ended it.
    }
    setAutoScroll(autoScroll);
}

SetListTable::Typing SetListTable::suspendTyping(QLineEdit& editor)
{
    QGuiApplication::inputMethod()->commit();
    Typing typing{editor.text(), editor.cursorPosition(), editor.selectionStart(),
                  editor.selectionLength()};
    closeEditor(&editor, QAbstractItemDelegate::NoHint);
    return typing;
}

void SetListTable::resumeTyping(int row, int column, const Typing& typing)
{
    editItem(item(row, column));
    auto* editor = qobject_cast<QLineEdit*>(openEditor());
    if (!editor) {
        return;
    }
    editor->setText(typing.text);
    if (typing.selectionLength == 0) {
        editor->setCursorPosition(typing.cursor);
    } else if (typing.cursor == typing.selectionStart) { // It was selected from the end.
        editor->setSelection(typing.selectionStart + typing.selectionLength,
                             -typing.selectionLength);
    } else {
        editor->setSelection(typing.selectionStart, typing.selectionLength);
    }
}

void SetListTable::storeOpenCell()
{
    if (QWidget* editor = openEditor()) {
        QGuiApplication::inputMethod()->commit();
        commitData(editor);
        closeEditor(editor, QAbstractItemDelegate::NoHint);
    }
}

void SetListTable::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    ExTableWidget::closeEditor(editor, hint);
    if (isRedrawing) {
        return;
    }
    pressedKey = 0;
    const int selected = selectedPos();
    if (selected != -1 && selected != currentRow()) { // A foot switch has moved it.
        setCurrentCell(selected, currentColumn(), QItemSelectionModel::ClearAndSelect);
    }
    if (const auto marks = std::exchange(marksToScrollTo, std::nullopt)) {
        scrollToMarks(marks->first, marks->second);
    }
}

int SetListTable::selectedPos() const
{
    const QModelIndexList selected = selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row();
}

void SetListTable::selectedRow(int row)
{
    const QModelIndex title = model()->index(row, TableLook::kTitleColumn);
    if (openEditor() || !title.isValid()) {
        selectionModel()->select(title, QItemSelectionModel::ClearAndSelect);
    } else {
        selectionModel()->setCurrentIndex(title, QItemSelectionModel::ClearAndSelect);
    }
}

void SetListTable::setSelectedTextColor(const QColor& color)
{
    QPalette changed = palette();
    if (changed.color(QPalette::HighlightedText) == color) {
        return; // Setting a palette is slow, and rows come and go in a locate.
    }
    changed.setBrush(QPalette::All, QPalette::HighlightedText, color);
    setPalette(changed);
}

void SetListTable::scrollToMarks(int sentRow, int nextRow)
{
    if (openEditor()) {
        marksToScrollTo = {sentRow, nextRow};
        return;
    }
    const int horizontal = horizontalScrollBar()->value();
    const int rowAfter = std::min(std::max(sentRow, nextRow) + 1, rowCount() - 1);
    for (const int row : {rowAfter, nextRow, sentRow}) {
        if (row >= 0) {
            scrollTo(model()->index(row, TableLook::kTitleColumn));
        }
    }
    horizontalScrollBar()->setValue(horizontal);
}

void SetListTable::step(Qt::Key upOrDown)
{
    if (!openEditor()) {
        QKeyEvent event(QEvent::KeyPress, upOrDown, Qt::NoModifier);
        ExTableWidget::keyPressEvent(&event);
        return;
    }
    const int row = selectedPos() + (upOrDown == Qt::Key_Down ? 1 : -1);
    if (row >= 0 && row < rowCount()) {
        selectionModel()->select(model()->index(row, currentColumn()),
                                 QItemSelectionModel::ClearAndSelect);
    }
}

bool SetListTable::event(QEvent* event)
{
    // Not in keyPressEvent(), where QAbstractItemView puts a new event in place of a Tab.
    return isForeignRepeat(event) || ExTableWidget::event(event);
}

bool SetListTable::isForeignRepeat(QEvent* event)
{
    if (event->type() != QEvent::KeyPress) {
        return false;
    }
    const auto* press = static_cast<QKeyEvent*>(event);
    // Under X11, Qt reports most repeats as a release and a press with the same time.
    const bool isRepeat = press->isAutoRepeat() ||
                          (press->key() == releasedKey && press->timestamp() == releaseTimeMs);
    if (isRepeat && press->key() != pressedKey) {
        return true;
    }
    pressedKey = press->key();
    return false;
}

void SetListTable::keyReleaseEvent(QKeyEvent* event)
{
    releasedKey = event->key();
    releaseTimeMs = event->timestamp();
    ExTableWidget::keyReleaseEvent(event);
}

// Composed text would open the current cell, and the keys that compose it are not for the DAW.
void SetListTable::inputMethodEvent(QInputMethodEvent* event)
{
    event->ignore();
}

void SetListTable::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    ExTableWidget::currentChanged(current, previous);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}
