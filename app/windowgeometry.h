// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QVector>

class QTableWidget;
class QWidget;

// The widgets whose geometry survives a restart.
struct PlacedWidgets
{
    QWidget& window;
    QTableWidget& table; // The width of its first column.
    QWidget& editor;
};

// Reads and writes the geometry file. An editor without a stored geometry keeps its size and is
// placed beside the window.
void readGeometry(const PlacedWidgets& widgets);
void writeGeometry(const PlacedWidgets& widgets);

// Where a window with the stored geometry `stored` is put on a desktop of these screens, all in
// pixels of the desktop. A window of which some part is visible stays. One that is on no screen, as
// after a display was unplugged, is moved to the nearest, and is wholly visible there if it fits;
// `titleHeight` pixels above it are kept free for its title bar.
QRect visiblePlace(const QRect& stored, const QVector<QRect>& screens, int titleHeight);
