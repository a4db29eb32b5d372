// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QVector>

// Where a window with the stored geometry `stored` is put on a desktop of these screens, all in
// pixels of the desktop. A window of which some part is visible stays. One that is on no screen, as
// after a display was unplugged, is moved to the nearest, and is wholly visible there if it fits;
// `titleHeight` pixels above it are kept free for its title bar.
QRect visiblePlace(const QRect& stored, const QVector<QRect>& screens, int titleHeight);
