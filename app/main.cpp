// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "displayscale.h"
#include "mainwindow.h"
#include "quitsignals.h"
#include "writeatonce.h"

#include <QApplication>
#include <QIcon>

#include <csignal>

int main(int argc, char* argv[])
{
    // A display or MIDI server that goes away while it is written to must not end the show.
    std::signal(SIGPIPE, SIG_IGN);
    qInstallMessageHandler(writeMessageAtOnce); // A paused terminal must not hold it up.

    QCoreApplication::setApplicationName(QStringLiteral("VELT"));
    if (argc > 1) {
        if (const auto status = runCommandLine(argc, argv)) {
            return *status;
        }
    }

    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        // Nothing is drawn with OpenGL; loading it would double start-up time and memory.
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0) // Qt 6 always does.
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    useRealDisplayScale();
    QApplication application(argc, argv);

    const QuitSignals quitSignals;
    MainWindow window(nullptr);
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &window, &MainWindow::quit);
    window.show();
    // Decoded while the X server maps the window.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/img/img/VELT_Logo_512.ico")));
    return QApplication::exec();
}
