// SPDX-License-Identifier: MIT
// The colours of the sent and the next row in the preferences.
#include "preferencedialog.h"

#include "editdata.h"
#include "ui_preferencedialog.h"

#include <QApplication>
#include <QColorDialog>
#include <QFocusFrame>

// The style sheets of the colour buttons leave no sign of the keyboard focus: a frame around the
// button shows it.
void PreferenceDialog::setUpColorFocus()
{
    auto* frame = new QFocusFrame(this);
    const QWidget* send = ui->pushSendColor;
    const QWidget* next = ui->pushNextColor;
    connect(qApp, &QApplication::focusChanged, frame, [=](QWidget*, QWidget* now) {
        frame->setWidget(now == send || now == next ? now : nullptr);
    });
}

void PreferenceDialog::setColorsFromEdit()
{
    sendColor = editData->SendTextColor;
    nextColor = editData->NextTextColor;
    setColorButtonStyle(ui->pushSendColor, sendColor);
    setColorButtonStyle(ui->pushNextColor, nextColor);
}

void PreferenceDialog::setEditFromColors()
{
    editData->SendTextColor = sendColor;
    editData->NextTextColor = nextColor;
}

void PreferenceDialog::chooseColor(QColor& colour, QPushButton* button)
{
    edit([&] {
        const QColor chosen = QColorDialog::getColor(colour, this);
        if (chosen.isValid()) {
            colour = chosen;
            setColorButtonStyle(button, colour);
        }
        return chosen.isValid();
    });
}

void PreferenceDialog::on_pushSendColor_clicked()
{
    chooseColor(sendColor, ui->pushSendColor);
}

void PreferenceDialog::on_pushNextColor_clicked()
{
    chooseColor(nextColor, ui->pushNextColor);
}

void PreferenceDialog::setColorButtonStyle(QPushButton* button, const QColor& colour)
{
    button->setStyleSheet(QStringLiteral(" QPushButton:hover {background-color:%1;} "
                                         " QPushButton:pressed {background-color:%1;"
                                         "border:1px solid %1;} "
                                         " QPushButton {background-color:%1;border-style: solid;"
                                         "border-radius: 5;} ")
                              .arg(colour.name(QColor::HexArgb)));
}
