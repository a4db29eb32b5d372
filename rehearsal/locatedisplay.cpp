// SPDX-License-Identifier: MIT
#include "locatedisplay.h"

#include "look.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <utility>

namespace {

// Shares of the height inside the margins, from top to bottom; the rest are gaps.
constexpr qreal kTransportShare = 0.10;
constexpr qreal kCaptionTop = 0.20;
constexpr qreal kCaptionShare = 0.10;
constexpr qreal kNumberTop = 0.40;
constexpr qreal kNumberShare = 0.52;
constexpr qreal kMargin = 0.06;
constexpr int kSteadyDigits = 4; // Numbers of up to this many digits have the same size.

// One line of text whose capitals and digits are as high as the area, or smaller where `widest`
// would not fit. `widest` may be longer than the text, so that the size stays while the text
// changes.
void drawFitted(QPainter& painter, const QRectF& area, Qt::Alignment alignment, const QString& text,
                const QString& widest)
{
    constexpr int kReferencePixels = 100;
    QFont font = painter.font();
    font.setPixelSize(kReferencePixels);
    const QFontMetricsF metrics(font);
    const qreal scale = std::min(area.width() / std::max(1.0, metrics.horizontalAdvance(widest)),
                                 area.height() / metrics.capHeight());
    font.setPixelSize(std::max(1, static_cast<int>(kReferencePixels * scale)));
    painter.setFont(font);

    const QFontMetricsF fitted(font);
    const qreal slack = area.width() - fitted.horizontalAdvance(text);
    const qreal left =
        alignment == Qt::AlignLeft ? 0 : slack / (alignment == Qt::AlignRight ? 1 : 2);
    painter.drawText(QPointF(area.left() + left, area.center().y() + fitted.capHeight() / 2), text);
}

QString captionOf(Target target)
{
    return target == Target::Bar ? LocateDisplay::tr("BAR") : LocateDisplay::tr("MARKER");
}

} // namespace

LocateDisplay::LocateDisplay(QString dawName, QWidget* parent)
    : QWidget(parent), name(std::move(dawName)), caption(tr("Nothing located yet"))
{
    setMinimumSize(320, 120);
}

void LocateDisplay::showPlaying(bool plays)
{
    isPlaying = plays;
    update();
}

void LocateDisplay::showTyping(Target target, const QString& digits)
{
    change(Typing, captionOf(target) + QStringLiteral(" ?"), digits);
}

void LocateDisplay::showLocated(Target target, int number)
{
    change(Located, captionOf(target), QString::number(number));
}

void LocateDisplay::showWrong(const QString& keys)
{
    change(Wrong, tr("WRONG SEQUENCE"), keys);
}

void LocateDisplay::change(State newState, const QString& newCaption, const QString& newText)
{
    state = newState;
    caption = newCaption;
    text = newText;
    update();
}

QColor LocateDisplay::textColor() const
{
    switch (state) {
    case Typing:
        return Look::kTyping;
    case Located:
        return Look::kLocated;
    case Wrong:
        return Qt::white;
    case Empty:
        break;
    }
    return Look::kDim;
}

void LocateDisplay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(state == Wrong ? Look::kWrong : Look::kPanel);
    painter.drawRoundedRect(rect(), 8, 8);

    const qreal margin = kMargin * height();
    const QRectF inside = QRectF(rect()).adjusted(margin, margin, -margin, -margin);
    const auto band = [&](qreal top, qreal share) {
        return QRectF(inside.left(), inside.top() + top * inside.height(), inside.width(),
                      share * inside.height());
    };
    paintTransport(painter, band(0, kTransportShare));

    QFont font = painter.font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(textColor());
    switch (state) {
    case Empty:
        drawFitted(painter, band(0.5, kCaptionShare), Qt::AlignHCenter, caption, caption);
        break;
    case Wrong:
        drawFitted(painter, band(0.36, 0.2), Qt::AlignHCenter, caption, caption);
        drawFitted(painter, band(0.72, 0.1), Qt::AlignHCenter, text, text);
        break;
    case Typing:
    case Located:
        drawFitted(painter, band(kCaptionTop, kCaptionShare), Qt::AlignHCenter, caption, caption);
        drawFitted(painter, band(kNumberTop, kNumberShare), Qt::AlignHCenter, text,
                   text.rightJustified(kSteadyDigits, QLatin1Char('0')));
        break;
    }
}

void LocateDisplay::paintTransport(QPainter& painter, const QRectF& area) const
{
    const QColor color =
        state == Wrong ? QColor(Qt::white) : (isPlaying ? Look::kPlaying : Look::kDim);
    const qreal size = area.height();
    const QRectF sign(area.topLeft(), QSizeF(size, size));
    QPainterPath path;
    if (isPlaying) {
        path.addPolygon(
            QPolygonF({sign.topLeft(), {sign.right(), sign.center().y()}, sign.bottomLeft()}));
    } else {
        path.addRect(sign);
    }
    painter.fillPath(path, color);

    painter.setPen(color);
    const QRectF half(area.left(), area.top(), area.width() / 2, area.height());
    const QString word = isPlaying ? tr("PLAYING") : tr("STOPPED");
    drawFitted(painter, half.adjusted(size * 1.6, 0, 0, 0), Qt::AlignLeft, word, word);

    painter.setPen(state == Wrong ? QColor(Qt::white) : Look::kDim);
    drawFitted(painter, half.translated(half.width(), 0), Qt::AlignRight, name, name);
}
