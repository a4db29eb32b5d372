// SPDX-License-Identifier: MIT
#pragma once

#include "showselector.h"

#include <QHBoxLayout>

// The row of controls below the send buttons, and the show selector: what is locked and unlocked as
// a run begins and ends. What the buttons do is connected by the window.
class RunControls : public QHBoxLayout
{
    Q_OBJECT

public:
    explicit RunControls(QMainWindow* window);

    ExComboBox* const comboMode;
    ExPushButton* const pushReset;
    ExPushButton* const pushEdit;
    ExPushButton* const pushPreference;
    ShowSelector* const comboShowList; // Not in the row; the window places it.

    void setRunning(bool isRunning);
    [[nodiscard]] bool hasFocusFlag() const; // Of any of the controls.
};
