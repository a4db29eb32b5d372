// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;
class QPoint;

// Real keys, mouse and windows of the display that DISPLAY names.
namespace Desktop {

// Returns what xdotool prints. If the command fails, the test does, unless it may fail.
QString xdotool(const QStringList& arguments, bool mayFail = false);
// Presses keys one after the other: "space 0 ctrl+t".
void key(const QString& keys);
void click(const QWidget* widget, QPoint at, int times = 1);
// Visible windows with exactly this title.
QStringList windows(const QString& title);

} // namespace Desktop
