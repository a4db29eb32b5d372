// SPDX-License-Identifier: MIT
#pragma once

#include <QPlainTextEdit>
#include <QTimer>

#include <deque>

// The last 2,000 events with the time of day. Follows the newest line unless the reader has
// scrolled away from it. Never takes the keyboard focus.
//
// Events appear a moment later, several at a time, so that a flood of MIDI does not slow the
// program down.
class EventLog : public QPlainTextEdit
{
    Q_OBJECT

public:
    enum Tone { Plain, Good, Bad };

    explicit EventLog(QWidget* parent = nullptr);

    // `timeUs` as of monotonicUs().
    void add(qint64 timeUs, const QString& text, Tone tone = Plain);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Line
    {
        QString time;
        QString text;
        Tone tone;
    };

    void showPending();
    [[nodiscard]] bool isAtEnd() const;
    void goToEnd();

    std::deque<Line> pending; // At most as many as the log shows.
    QTimer pendingTimer;
};
