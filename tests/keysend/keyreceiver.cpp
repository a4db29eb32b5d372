// SPDX-License-Identifier: MIT
// Stands in for an application that calls itself what its argument says: shows a window and writes
// a line for every key that it gets, and "active" when the window becomes the active one.
#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

namespace {

class Receiver : public QWidget
{
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::WindowActivate) {
            std::puts("active");
        } else if (event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease) {
            const auto* const key = static_cast<QKeyEvent*>(event);
            // Versions of Qt differ in which keys they count to the keypad; the keysym says it too.
            const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
            std::printf("%s keysym %x modifiers %x%s\n",
                        event->type() == QEvent::KeyPress ? "press" : "release",
                        key->nativeVirtualKey(), static_cast<unsigned>(modifiers),
                        key->isAutoRepeat() ? " repeated" : "");
        } else {
            return QWidget::event(event);
        }
        std::fflush(stdout);
        return true;
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    prctl(PR_SET_NAME, argv[1]);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    Receiver window;
    window.show();
    window.activateWindow();
    return QApplication::exec();
}
