// SPDX-License-Identifier: MIT
#include "messageboxes.h"

namespace MessageBoxes {

namespace {

QMessageBox::StandardButton run(QMessageBox::Icon icon, const QString& title, const QString& text,
                                QMessageBox::StandardButtons buttons, QWidget* parent)
{
    QMessageBox box(icon, title, text, buttons, parent,
                    Qt::Dialog | Qt::MSWindowsFixedSizeDialogHint);
    // Titles typed by users and texts of libraries stand as they are, not as markup.
    box.setTextFormat(Qt::PlainText);
    return static_cast<QMessageBox::StandardButton>(box.exec());
}

} // namespace

bool confirm(QWidget* parent, const QString& text)
{
    return run(QMessageBox::Question, QString(), text, QMessageBox::Ok | QMessageBox::Cancel,
               parent) == QMessageBox::Ok;
}

QMessageBox::StandardButton askToSave(QWidget* parent)
{
    return run(QMessageBox::Question, QString(),
               QStringLiteral("Contents have been changed. Do you want to save changes?"),
               QMessageBox::Save | QMessageBox::No | QMessageBox::Cancel, parent);
}

void critical(QWidget* parent, const QString& title, const QString& text)
{
    run(QMessageBox::Critical, title, text, QMessageBox::Ok, parent);
}

void warn(QWidget* parent, const QString& text)
{
    run(QMessageBox::Warning, QString(), text, QMessageBox::Ok, parent);
}

} // namespace MessageBoxes
