// SPDX-License-Identifier: MIT
#include "savingdialog.h"

#include "messageboxes.h"
#include "operatorwindow.h"

#include <QCloseEvent>

SavingDialog::SavingDialog(QWidget* parent)
    : QDialog(parent, Qt::Window | Qt::WindowCloseButtonHint),
      parentWindow(dynamic_cast<OperatorWindow*>(parent))
{
}

void SavingDialog::closeEvent(QCloseEvent* event)
{
    const auto answer = isChanged ? MessageBoxes::askToSave(this) : QMessageBox::No;
    if (answer == QMessageBox::Save) {
        save();
    } else if (answer == QMessageBox::No) {
        isChanged = false;
    } else {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

void SavingDialog::saveAndClose()
{
    save();
    close();
}

void SavingDialog::closeWithoutQuestion()
{
    isChanged = false;
    close();
}
