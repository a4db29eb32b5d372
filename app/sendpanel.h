// SPDX-License-Identifier: MIT
#pragma once

#include "exwidgets.h"

#include <QGroupBox>

// The frame with the seven send buttons, made from one table in sendpanel.cpp. It shows by its
// colour whether the window has the keyboard. What a button does is connected by the window.
//
// The buttons take the focus by Tab only: a click on one does not end the typing in a cell.
class SendPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit SendPanel(QMainWindow* window);

    ExPushButton* sendLocate = nullptr;
    ExPushButton* sendDawStart = nullptr;
    ExPushButton* sendDawStop = nullptr;
    ExPushButton* send0 = nullptr;
    ExPushButton* sendTab = nullptr;
    ExPushButton* sendSpace = nullptr;
    ExPushButton* sendEnter = nullptr;

    static void setSendButtonEnabled(ExPushButton* button, bool enabled);

    // Enables the key buttons that work in a DAW mode.
    void setKeyButtonsFor(std::int32_t mode);
    // The button that a key press clicks in a DAW mode; null if it clicks none.
    [[nodiscard]] ExPushButton* buttonOfKey(int key, std::int32_t mode) const;

    void setSendButtonIsShow(bool show);     // The frame stays.
    [[nodiscard]] bool hasFocusFlag() const; // Of any button.
    void setFocusStyleOn();                  // Amber: keys reach the window.
    void setFocusStyleOff();                 // Grey: they go elsewhere.
};
