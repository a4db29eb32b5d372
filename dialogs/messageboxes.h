// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

// The program's modal message boxes. Each runs until it is answered and returns the answer; a box
// that is closed or escaped answers as Qt decides (Cancel where there is one).
namespace MessageBoxes {

// A question with OK and Cancel: true if the answer is OK. Questions have no title.
bool confirm(QWidget* parent, const QString& text);

// The question whether changed contents are to be saved: Save, No or Cancel.
QMessageBox::StandardButton askToSave(QWidget* parent);

// A failure, with the reporting library's own message as text.
void critical(QWidget* parent, const QString& title, const QString& text);

// A warning without a title.
void warn(QWidget* parent, const QString& text);

} // namespace MessageBoxes
