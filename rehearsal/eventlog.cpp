// SPDX-License-Identifier: MIT
#include "eventlog.h"

#include "clock.h"
#include "look.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QTextCursor>
#include <QTime>

namespace {

constexpr int kLogLines = 2000;
constexpr int kGatherMs = 50;
constexpr int kLineLimit = 200; // Characters; a long System Exclusive message is cut.

QColor colorOf(EventLog::Tone tone)
{
    switch (tone) {
    case EventLog::Good:
        return Look::kLocated;
    case EventLog::Bad:
        return Look::kWrongText;
    case EventLog::Plain:
        break;
    }
    return Look::kText;
}

} // namespace

EventLog::EventLog(QWidget* parent) : QPlainTextEdit(parent)
{
    setReadOnly(true);
    setFocusPolicy(Qt::NoFocus);
    setUndoRedoEnabled(false);
    setMaximumBlockCount(kLogLines);
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    pendingTimer.setSingleShot(true);
    pendingTimer.setInterval(kGatherMs);
    connect(&pendingTimer, &QTimer::timeout, this, &EventLog::showPending);
    setMinimumHeight(fontMetrics().lineSpacing() * 3);
}

void EventLog::add(qint64 timeUs, const QString& text, Tone tone)
{
    constexpr qint64 kUsPerMs = 1000;
    const qint64 agoMs = (monotonicUs() - timeUs) / kUsPerMs;
    const QString time = QTime::currentTime()
                             .addMSecs(-static_cast<int>(agoMs))
                             .toString(QStringLiteral("HH:mm:ss.zzz"));
    const bool isLong = text.size() > kLineLimit;
    pending.push_back({time, isLong ? text.left(kLineLimit) + QStringLiteral(" ...") : text, tone});
    if (pending.size() > kLogLines) {
        pending.pop_front();
    }
    if (!pendingTimer.isActive()) {
        pendingTimer.start();
    }
}

void EventLog::showPending()
{
    const bool follows = isAtEnd();
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    QTextCharFormat format;
    for (const Line& line : pending) {
        if (cursor.position() > 0) {
            cursor.insertBlock();
        }
        format.setForeground(Look::kDim);
        cursor.insertText(line.time + QStringLiteral("  "), format);
        format.setForeground(colorOf(line.tone));
        cursor.insertText(line.text, format);
    }
    cursor.endEditBlock();
    pending.clear();
    if (follows) {
        goToEnd();
    }
}

void EventLog::resizeEvent(QResizeEvent* event)
{
    const bool follows = isAtEnd();
    QPlainTextEdit::resizeEvent(event);
    if (follows) {
        goToEnd();
    }
}

bool EventLog::isAtEnd() const
{
    return verticalScrollBar()->value() == verticalScrollBar()->maximum();
}

void EventLog::goToEnd()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}
