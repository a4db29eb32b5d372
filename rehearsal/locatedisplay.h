// SPDX-License-Identifier: MIT
#pragma once

#include "daw.h"

#include <QWidget>

#include <optional>

// The DAW's counter, readable from metres away: transport, what was located, or the number that is
// being typed. A wrong sequence fills the whole area in red until the next entry is opened.
// Everything scales with the widget.
class LocateDisplay : public QWidget
{
    Q_OBJECT

public:
    explicit LocateDisplay(QString dawName, QWidget* parent = nullptr);

    void showPlaying(bool plays);
    void showTyping(Target target, const QString& digits);
    void showLocated(Target target, int number);
    void showWrong(const QString& keys); // Such as "= 1 Tab (key does not belong here)".

protected:
    void paintEvent(QPaintEvent*) override;

private:
    enum State { Empty, Typing, Located, Wrong };

    void change(State newState, const QString& newCaption, const QString& newText);
    void paintTransport(QPainter& painter, const QRectF& area) const;
    [[nodiscard]] QColor textColor() const;

    QString name;
    State state = Empty;
    QString caption;
    QString text;
    bool isPlaying = false;
};
