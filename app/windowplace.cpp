// SPDX-License-Identifier: MIT
#include "windowplace.h"

#include <algorithm>

namespace {

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

} // namespace

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
