// SPDX-License-Identifier: MIT
// Stands in for an application in tests with a display: shows a window, writes a line to its
// standard output for every key that it gets, and one with the id of a window that becomes active.
// Its argument is what the process calls itself.
//
// Lines on its standard input: "open" shows one more window; "lower", "minimize" and "close" do
// that to the last one, and when all are closed the program goes on. It answers each with "done",
// and ends with its input.
#include <QApplication>
#include <QKeyEvent>
#include <QSocketNotifier>
#include <QWidget>

#include <cstdio>
#include <memory>
#include <sys/prctl.h>
#include <unistd.h>
#include <vector>

namespace {

void writeLine(const QString& text)
{
    std::puts(qPrintable(text));
    std::fflush(stdout);
}

class Receiver : public QWidget
{
public:
    Receiver()
    {
        setFocusPolicy(Qt::StrongFocus);
        resize(200, 100);
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::WindowActivate) {
            writeLine(QStringLiteral("active %1").arg(winId()));
        }
        return QWidget::event(event);
    }
    // No Tab navigation: that key is to be reported, too.
    bool focusNextPrevChild(bool) override { return false; }
    void keyPressEvent(QKeyEvent* event) override { writeKey("press", *event); }
    void keyReleaseEvent(QKeyEvent* event) override { writeKey("release", *event); }

private:
    void writeKey(const char* what, const QKeyEvent& event)
    {
        writeLine(QStringLiteral("%1 keysym %2 modifiers %3%4")
                      .arg(QLatin1String(what))
                      .arg(event.nativeVirtualKey(), 0, 16)
                      .arg(static_cast<int>(event.modifiers()), 0, 16)
                      .arg(event.isAutoRepeat() ? QStringLiteral(" repeated") : QString()));
    }
};

void obey(const QByteArray& command, std::vector<std::unique_ptr<Receiver>>& windows)
{
    if (command == "open") {
        windows.push_back(std::make_unique<Receiver>());
        windows.back()->show();
        windows.back()->activateWindow();
    } else if (command == "lower") {
        windows.back()->lower();
    } else if (command == "minimize") {
        windows.back()->showMinimized();
    } else {
        windows.pop_back();
    }
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    prctl(PR_SET_NAME, argv[1]);
    std::vector<std::unique_ptr<Receiver>> windows;
    obey("open", windows);
    QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&] {
        char line[64] = {};
        if (std::fgets(line, sizeof line, stdin)) {
            obey(QByteArray(line).trimmed(), windows);
            QGuiApplication::sync();
            writeLine(QStringLiteral("done"));
        } else {
            QApplication::quit();
        }
    });
    return QApplication::exec();
}
