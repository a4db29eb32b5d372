// SPDX-License-Identifier: MIT
#include "windowgeometry.h"

#include "datafiles.h"
#include "displaystatus.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <QTableWidget>

#include <algorithm>

namespace {

constexpr QPoint kEditorOffset{30, -10}; // Of an editor without a stored place, from the window.

// How far apart two intervals are, 0 where they meet.
int gap(int first, int firstEnd, int second, int secondEnd)
{
    return std::max({0, second - firstEnd, first - secondEnd});
}

qint64 squaredDistance(const QRect& a, const QRect& b)
{
    const qint64 x = gap(a.left(), a.right(), b.left(), b.right());
    const qint64 y = gap(a.top(), a.bottom(), b.top(), b.bottom());
    return x * x + y * y;
}

// The top left corner shows in any case.
int within(int wanted, int length, int first, int end)
{
    return std::max(first, std::min(wanted, end - length));
}

QRect onScreens(const QRect& stored)
{
    QVector<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
        screens << screen->availableGeometry();
    }
    return visiblePlace(stored, screens,
                        QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight));
}

} // namespace

QRect readGeometry(QWidget& window, QTableWidget& table)
{
    const DisplayStatus status = readDisplayStatus(displayStatusFilePath());
    window.setGeometry(onScreens(status.window));
    table.setColumnWidth(0, status.columnWidth);
    return status.editor.width() != 0 ? onScreens(status.editor)
                                      : QRect(window.pos() + kEditorOffset, QSize(0, 0));
}

void placeEditor(QWidget& editor, const QRect& place)
{
    if (place.width() != 0) {
        editor.setGeometry(place);
    } else {
        editor.move(place.topLeft());
    }
}

void writeGeometry(const QWidget& window, const QTableWidget& table, const QWidget& editor)
{
    writeDisplayStatus(displayStatusFilePath(),
                       {window.geometry(), table.columnWidth(0), editor.geometry()});
}

QRect visiblePlace(const QRect& stored, const QVector<QRect>& screens, int titleHeight)
{
    const bool isVisible = std::any_of(screens.begin(), screens.end(), [&](const QRect& screen) {
        return screen.intersects(stored);
    });
    if (isVisible || screens.isEmpty()) {
        return stored;
    }
    const QRect nearest =
        *std::min_element(screens.begin(), screens.end(), [&](const QRect& a, const QRect& b) {
            return squaredDistance(stored, a) < squaredDistance(stored, b);
        });
    const QRect room = nearest.adjusted(0, titleHeight, 0, 0);
    return {QPoint(within(stored.x(), stored.width(), room.left(), room.right() + 1),
                   within(stored.y(), stored.height(), room.top(), room.bottom() + 1)),
            stored.size()};
}
