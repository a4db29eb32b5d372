// SPDX-License-Identifier: MIT
#include "sendpanel.h"

#include "dawmodes.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QIcon>

#include <algorithm>
#include <iterator>

namespace {

constexpr int kMinimumButtonWidth = 25;
constexpr int kIconSize = 24;

constexpr unsigned kNoKeyButton = 0;
constexpr int kNoKey = 0;

// The buttons, from left to right.
struct Row
{
    using Button = ExPushButton* SendPanel::*;
    Button button;
    const char* icon;
    const char* spokenName;
    unsigned keyButton; // Of the keys that a DAW mode allows.
    int key;            // Clicks the button where the mode allows it.
};
constexpr Row kRows[] = {
    {&SendPanel::sendLocate, "locate.ico", QT_TRANSLATE_NOOP("MainWindow", "LOCATE"), kNoKeyButton,
     kNoKey},
    {&SendPanel::sendDawStart, "play.ico", QT_TRANSLATE_NOOP("MainWindow", "DAW PLAY"),
     kNoKeyButton, kNoKey},
    {&SendPanel::sendDawStop, "stop.ico", QT_TRANSLATE_NOOP("MainWindow", "DAW STOP"), kNoKeyButton,
     kNoKey},
    {&SendPanel::send0, "zero.ico", QT_TRANSLATE_NOOP("MainWindow", "Key 0"), Button0, Qt::Key_0},
    {&SendPanel::sendTab, "tab.ico", QT_TRANSLATE_NOOP("MainWindow", "Key Tab"), ButtonTab,
     Qt::Key_Tab},
    {&SendPanel::sendSpace, "space.ico", QT_TRANSLATE_NOOP("MainWindow", "Key Space"), ButtonSpace,
     Qt::Key_Space},
    {&SendPanel::sendEnter, "enter.ico", QT_TRANSLATE_NOOP("MainWindow", "Key Enter"), ButtonEnter,
     Qt::Key_Enter},
};

// Qt styles a widget and all in it again even where nothing changes.
void changeStyleSheet(QWidget* widget, const QString& styleSheet)
{
    if (widget->styleSheet() != styleSheet) {
        widget->setStyleSheet(styleSheet);
    }
}

void setSendButtonStyle(ExPushButton* button, const QString& iconPath)
{
    button->setMinimumWidth(kMinimumButtonWidth);
    button->setIcon(QIcon(iconPath));
    button->setIconSize(QSize(kIconSize, kIconSize));
}

} // namespace

SendPanel::SendPanel(QMainWindow* window)
{
    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(1);
    for (const Row& row : kRows) {
        auto* button = new ExPushButton(window);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(QCoreApplication::translate("MainWindow", row.spokenName));
        setSendButtonStyle(button, QLatin1String(":/img/img/") + QLatin1String(row.icon));
        if (row.keyButton == kNoKeyButton) { // The others follow the DAW mode.
            setSendButtonEnabled(button, true);
        }
        layout->addWidget(button);
        this->*row.button = button;
    }
    setSendButtonEnabled(sendLocate, false); // Nothing is there to locate yet.
}

void SendPanel::setSendButtonEnabled(ExPushButton* button, bool enabled)
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

void SendPanel::setKeyButtonsFor(std::int32_t mode)
{
    for (const Row& row : kRows) {
        if (row.keyButton != kNoKeyButton) {
            setSendButtonEnabled(this->*row.button, dawMode(mode).daw.buttons & row.keyButton);
        }
    }
}

ExPushButton* SendPanel::buttonOfKey(int key, std::int32_t mode) const
{
    const Row* const row = std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& r) {
        return r.key == key && (dawMode(mode).daw.keys & r.keyButton);
    });
    return row == std::end(kRows) ? nullptr : this->*row->button;
}

void SendPanel::setSendButtonIsShow(bool show)
{
    for (const Row& row : kRows) {
        (this->*row.button)->setVisible(show);
    }
}

bool SendPanel::hasFocusFlag() const
{
    return std::any_of(std::begin(kRows), std::end(kRows),
                       [this](const Row& row) { return (this->*row.button)->hasFocusFlag(); });
}

void SendPanel::setFocusStyleOn()
{
    changeStyleSheet(this, QStringLiteral(" QGroupBox {background-color:#ffcc00;border-style: "
                                          "solid;border-radius: 10;} "));
}

void SendPanel::setFocusStyleOff()
{
    changeStyleSheet(this, QStringLiteral(" QGroupBox {background-color:#4B4B4B;border-style: "
                                          "solid;border-radius: 10;} "));
}
