// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QVector>

class QTableWidget;
class QWidget;

// Places the window as the geometry file says, and sizes the table's first column. Returns the
// place of the editor; without a size if none is stored: beside the window.
QRect readGeometry(QWidget& window, QTableWidget& table);
// An editor keeps its own size if `place` has none.
void placeEditor(QWidget& editor, const QRect& place);
void writeGeometry(const QWidget& window, const QTableWidget& table, const QWidget& editor);

// Where a window with the stored geometry `stored` is put on a desktop of these screens, all in
// pixels of the desktop. A window of which some part is visible stays. One that is on no screen, as
// after a display was unplugged, is moved to the nearest, and is wholly visible there if it fits;
// `titleHeight` pixels above it are kept free for its title bar.
QRect visiblePlace(const QRect& stored, const QVector<QRect>& screens, int titleHeight);
