// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <deque>
#include <functional>

// Answers modal windows while the code under test waits in them, one step for each window, in
// order. A window that the next step does not expect is a failure, and is closed so that nothing
// hangs.
class ModalScript : public QObject
{
    Q_OBJECT

public:
    struct Box
    {
        QMessageBox::Icon icon;
        QString title;
        QString text;
        QMessageBox::StandardButtons buttons;
    };

    ModalScript();
    ~ModalScript() override; // Fails the test if a step was not reached.

    // Waits for this message box, and presses `answer` (NoButton: the Escape key).
    void answer(const Box& box, QMessageBox::StandardButton answer);
    // The same for a question without a title, as all questions of the program are.
    void answerQuestion(const QString& text, QMessageBox::StandardButtons buttons,
                        QMessageBox::StandardButton pressed)
    {
        answer({QMessageBox::Question, QString(), text, buttons}, pressed);
    }
    // Waits for any other modal window and hands it over; `act` must make it close.
    void expect(const std::function<void(QWidget*)>& act) { steps.push_back(act); }

    bool isDone() const { return steps.empty(); }

private:
    void poll();

    std::deque<std::function<void(QWidget*)>> steps;
    QVector<QPointer<QWidget>> handled; // They stay open while others open and close above them.
};
