// SPDX-License-Identifier: MIT
#include "dawmodes.h"
#include "mainwindow.h"

#include <QGroupBox>

#include <algorithm>

namespace {

constexpr int kMinimumButtonWidth = 25;
constexpr int kIconSize = 24;

// The toolkit styles a widget and all in it anew even where nothing changes.
void changeStyleSheet(QWidget* widget, const QString& styleSheet)
{
    if (widget->styleSheet() != styleSheet) {
        widget->setStyleSheet(styleSheet);
    }
}

} // namespace

void MainWindow::setPreferenceData()
{
    const unsigned buttons = dawMode(editData.Mode).daw.buttons;
    setSendButtonEnabled(sendTab, buttons & ButtonTab);
    setSendButtonEnabled(sendSpace, buttons & ButtonSpace);
    setSendButtonEnabled(sendEnter, buttons & ButtonEnter);
    setSendButtonIsShow(editData.ShowKeyButton);
    processPos = -1;
}

void MainWindow::onKeyEvent(QKeyEvent* event)
{
    const struct
    {
        int key;
        KeyButton bit;
        ExPushButton* button;
    } bindings[] = {{Qt::Key_Space, ButtonSpace, sendSpace},
                    {Qt::Key_0, Button0, send0},
                    {Qt::Key_Tab, ButtonTab, sendTab},
                    {Qt::Key_Enter, ButtonEnter, sendEnter}};
    for (const auto& binding : bindings) {
        if (binding.key == event->key() && (dawMode(editData.Mode).daw.keys & binding.bit)) {
            binding.button->animateClick(kClickMs);
        }
    }
}

void MainWindow::keyPressEvent(QKeyEvent*)
{
}

void MainWindow::focusInEvent(QFocusEvent*)
{
    setFocusFlag(true);
}

void MainWindow::focusOutEvent(QFocusEvent*)
{
    setFocusFlag(false);
}

void MainWindow::setFocusFlag(bool hasFocus)
{
    focusFlag = hasFocus;
    onFocus();
}

void MainWindow::onFocus()
{
    const ExPushButton* const buttons[] = {pushReset,    pushEdit,    pushPreference, sendLocate,
                                           sendDawStart, sendDawStop, sendTab,        sendSpace,
                                           sendEnter,    send0};
    const bool isButtonFocused = std::any_of(std::begin(buttons), std::end(buttons),
                                             [](const auto* b) { return b->hasFocusFlag(); });
    if (focusFlag || isButtonFocused || comboMode->hasFocusFlag() ||
        comboShowList->hasFocusFlag() || tableSetList->hasFocusFlag()) {
        setFocusStyleOn();
    } else {
        setFocusStyleOff();
    }
}

void MainWindow::setFocusStyleOn()
{
    setFocusStyle(QStringLiteral(
        " QGroupBox {background-color:#ffcc00;border-style: solid;border-radius: 10;} "));
}

void MainWindow::setFocusStyleOff()
{
    setFocusStyle(QStringLiteral(
        " QGroupBox {background-color:#4B4B4B;border-style: solid;border-radius: 10;} "));
}

void MainWindow::setFocusStyle(const QString& styleSheet)
{
    changeStyleSheet(groupBoxSend, styleSheet);
}

void MainWindow::setSendButtonEnabled(ExPushButton* button, bool enabled)
{
    const QString color = enabled ? QStringLiteral("#767471;") : QStringLiteral("#b3b0ab;");
    changeStyleSheet(
        button,
        QStringLiteral(" QPushButton:hover {background-color:#C4EFEF;} "
                       " QPushButton:pressed {background-color:#ff6600;border:1px solid #cc0000;} "
                       " QPushButton {height: 30px;background-color:") +
            color + QStringLiteral("border-style: solid;border-radius: 10;} "));
    button->setEnabled(enabled);
}

void MainWindow::setSendButtonStyle(ExPushButton* button, const QString& iconPath)
{
    button->setMinimumWidth(kMinimumButtonWidth);
    button->setIcon(QIcon(iconPath));
    button->setIconSize(QSize(kIconSize, kIconSize));
}
