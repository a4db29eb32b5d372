// SPDX-License-Identifier: MIT
#include "exwidgets.h"

#include "tablelook.h"

#include <QTimerEvent>
#include <QWheelEvent>

void ExPushButton::focusInEvent(QFocusEvent* event)
{
    if (owner && text() == QLatin1String("Edit")) {
        owner->giveFocusToTable();
        return;
    }
    ExWidget::focusInEvent(event);
}

void ExPushButton::animateClick(int ms)
{
    if (isEnabled()) {
        setDown(true);
        repaint(); // The operator sees it before a slot takes its time.
        animation.start(ms, this);
    }
}

void ExPushButton::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != animation.timerId()) {
        ExWidget::timerEvent(event);
        return;
    }
    animation.stop();
    setDown(false);
    repaint();
    emit clicked();
}

void ExPushButton::keyReleaseEvent(QKeyEvent*)
{
    // QPushButton would click a button that the window's own click animation holds down.
}

void ExComboBox::showPopup()
{
    QComboBox::showPopup();
    isListOpen = true;
}

void ExComboBox::hidePopup() // Qt also calls this where no list was open.
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

void ExTableWidget::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool moves = key == Qt::Key_Up || key == Qt::Key_Down;
    if (openEditor() && !moves) {
        return;
    }
    const bool isForWindow = key == Qt::Key_Tab || key == Qt::Key_Left || key == Qt::Key_Right;
    const bool editsCue =
        currentColumn() == TableLook::kCueColumn && owner && !owner->isOperationOn();
    if (moves || (editsCue && !isForWindow)) {
        // NOLINTNEXTLINE(bugprone-parent-virtual-call): past the routing to the window
        QTableWidget::keyPressEvent(event);
    } else {
        ExWidget::keyPressEvent(event);
    }
}
