// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

class QWidget;
class QPoint;

// Real keys, mouse and windows of the display that DISPLAY names.
namespace Desktop {

// What it prints; a failure of the command fails the test, unless it may fail.
QString xdotool(const QStringList& arguments, bool mayFail = false);
// Presses keys one after the other: "space 0 ctrl+t".
void key(const QString& keys);
void click(const QWidget* widget, QPoint at, int times = 1);
// Visible windows with this very title.
QStringList windows(const QString& title);

} // namespace Desktop
