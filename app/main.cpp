// SPDX-License-Identifier: MIT
#include "mainwindow.h"

#include <QApplication>

#include <csignal>

int main(int argc, char* argv[])
{
    // A display or MIDI server that goes away while it is written to must not end the show.
    std::signal(SIGPIPE, SIG_IGN);

    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        // Nothing here is drawn with OpenGL; loading it would double start-up time and memory.
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("VELT"));

    MainWindow window(nullptr);
    window.show();
    return QApplication::exec();
}
