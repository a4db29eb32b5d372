// SPDX-License-Identifier: MIT
#pragma once

#include <QBasicTimer>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QTableWidget>

// What the Ex widgets ask of the window they stand in, which takes keys and watches the focus for
// all of them.
class KeyAndFocusOwner
{
public:
    virtual void onKeyEvent(QKeyEvent* event) = 0;
    virtual void onFocus() = 0;
    [[nodiscard]] virtual bool isOperationOn() const = 0;
    virtual void giveFocusToTable() = 0;

protected:
    KeyAndFocusOwner() = default;
    ~KeyAndFocusOwner() = default;
    KeyAndFocusOwner(const KeyAndFocusOwner&) = default;
    KeyAndFocusOwner& operator=(const KeyAndFocusOwner&) = default;
};

// A Qt widget that hands every key press to its window instead of interpreting it, and tells
// the window when it gets or loses the keyboard focus. Made without a parent; the window's layouts
// give it one. The window must be a KeyAndFocusOwner, else keys and focus changes are dropped.
template <typename Base>
class ExWidget : public Base
{
public:
    explicit ExWidget(QMainWindow* window) : owner(dynamic_cast<KeyAndFocusOwner*>(window)) {}

    [[nodiscard]] bool hasFocusFlag() const { return focusFlag; }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (owner) {
            owner->onKeyEvent(event);
        }
    }
    void focusInEvent(QFocusEvent*) override { setFocusFlag(true); }
    void focusOutEvent(QFocusEvent*) override { setFocusFlag(false); }

    KeyAndFocusOwner* owner; // Not owned; null outside an operator window.

private:
    void setFocusFlag(bool hasFocus)
    {
        focusFlag = hasFocus;
        if (owner) {
            owner->onFocus();
        }
    }

    bool focusFlag = false; // The widget holds the keyboard focus.
};

// A button whose text is "Edit" passes the focus on to the set-list table.
//
// animateClick() stands in for that of the toolkit, which in Qt 6 holds a button for 100 ms only.
class ExPushButton : public ExWidget<QPushButton>
{
    Q_OBJECT

public:
    using ExWidget::ExWidget;

    // Holds the button down for `ms` milliseconds, then clicks it; does nothing while the button is
    // disabled. A call while it is held starts the time afresh.
    void animateClick(int ms);

protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    QBasicTimer animation;
};

// Changed only by its list, which gives the focus to the set-list table when it closes; the mouse
// wheel changes nothing.
class ExComboBox : public ExWidget<QComboBox>
{
    Q_OBJECT

public:
    using ExWidget::ExWidget;

    void showPopup() override;
    void hidePopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    bool isListOpen = false;
};

class ExCheckBox : public ExWidget<QCheckBox>
{
    Q_OBJECT

public:
    using ExWidget::ExWidget;
};

// A set-list table: Up and Down move in it, and while no run is in progress its "Cue" column takes
// keys to edit the cue. Keys of a cell that is open for typing go no further, except Up and Down,
// which store it and move.
class ExTableWidget : public ExWidget<QTableWidget>
{
    Q_OBJECT

public:
    using ExWidget::ExWidget;

    // The editor of the cell that is open for typing, null if none is.
    [[nodiscard]] QWidget* openEditor() const { return indexWidget(currentIndex()); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
};
