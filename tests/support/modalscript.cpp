// SPDX-License-Identifier: MIT
#include "modalscript.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <algorithm>

namespace {

constexpr int kPollMs = 5;

void checkBox(const QMessageBox* box, const ModalScript::Box& expected)
{
    QVERIFY2(box, "the modal window is no message box");
    QCOMPARE(box->icon(), expected.icon);
    QCOMPARE(box->windowTitle(), expected.title);
    QCOMPARE(box->text(), expected.text);
    QCOMPARE(box->standardButtons(), expected.buttons);
}

} // namespace

ModalScript::ModalScript()
{
    QTimer::singleShot(0, this, &ModalScript::poll);
}

ModalScript::~ModalScript()
{
    if (!steps.empty()) {
        QTest::qFail("a modal window that was expected did not appear", __FILE__, __LINE__);
    }
}

void ModalScript::answer(const Box& box, QMessageBox::StandardButton answer)
{
    steps.emplace_back([box, answer](QWidget* window) {
        auto* shown = qobject_cast<QMessageBox*>(window);
        checkBox(shown, box);
        QAbstractButton* pressed = shown ? shown->button(answer) : nullptr;
        if (pressed) {
            pressed->click();
        } else {
            QTest::keyClick(window, Qt::Key_Escape);
        }
    });
}

void ModalScript::poll()
{
    // A timer for each poll: a step may open a further modal window, in which polling goes on.
    QTimer::singleShot(kPollMs, this, &ModalScript::poll);
    handled.erase(std::remove_if(handled.begin(), handled.end(),
                                 [](const auto& shown) { return !shown || !shown->isVisible(); }),
                  handled.end());
    QWidget* window = QApplication::activeModalWidget();
    if (!window || !window->isVisible() || handled.contains(window)) {
        return;
    }
    if (steps.empty()) {
        // A dialog that the test itself has opened is not the script's.
        if (qobject_cast<QMessageBox*>(window)) {
            QTest::qFail("a message box that nobody expected", __FILE__, __LINE__);
            window->close();
        }
        return;
    }
    handled.append(window);
    const auto act = steps.front();
    steps.pop_front();
    act(window);
}
