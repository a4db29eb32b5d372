// SPDX-License-Identifier: MIT
#include "aboutdialog.h"

#include "ui_aboutdialog.h"

AboutDialog::AboutDialog(int x, int y, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::AboutDialog>())
{
    ui->setupUi(this);
    setWindowFlags(Qt::Window | Qt::WindowCloseButtonHint);
    move(x, y);
    ui->label->setPixmap(QPixmap(QStringLiteral(":/img/img/VELT_Logo_512.ico")));
}

AboutDialog::~AboutDialog() = default;
