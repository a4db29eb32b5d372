// SPDX-License-Identifier: MIT
#include "practice.h"
#include "process.h"
#include "quitsignals.h"
#include "rehearsalwindow.h"
#include "usage.h"

#include <QApplication>
#include <QScreen>

#include <cstdio>
#include <unistd.h>

namespace {

constexpr int kUsageError = 2;
constexpr int kGap = 30; // Pixels between the two windows, for their frames.

void setDefaultInEnvironment(const char* name, const char* value)
{
    if (!qEnvironmentVariableIsSet(name)) {
        qputenv(name, value);
    }
}

void setUpQt()
{
    // No OpenGL: its libraries would take most of the memory.
    setDefaultInEnvironment("QT_XCB_GL_INTEGRATION", "none");
    if (qEnvironmentVariableIsSet("DISPLAY")) {
        // Other programs cannot type into native Wayland windows.
        setDefaultInEnvironment("QT_QPA_PLATFORM", "xcb");
    }
    setDefaultInEnvironment("QT_ENABLE_HIGHDPI_SCALING", "1");
}

void practise(Practice& practice, RehearsalWindow& window, Daw daw)
{
    const QScreen& screen = *QGuiApplication::primaryScreen();
    QApplication::setQuitOnLastWindowClosed(false);
    QObject::connect(&practice, &Practice::ended, qApp, &QCoreApplication::quit);
    QObject::connect(&practice, &Practice::failed, &window, [&window](const QString& why) {
        window.reportProblem(why);
        QApplication::setQuitOnLastWindowClosed(true);
        if (!window.isVisible()) {
            QCoreApplication::quit();
        }
    });
    QRect room = screen.availableGeometry();
    const QRect velt = Practice::veltGeometry(screen);
    room.setLeft(velt.right() + kGap);
    room.setTop(velt.top());
    window.move(room.topLeft());
    window.resize(window.size().boundedTo(room.size()));
    practice.start(daw, window.midiPorts(), screen);
}

} // namespace

int main(int argc, char** argv)
{
    prepareStandardStreams();
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments += QString::fromLocal8Bit(argv[i]);
    }
    if (arguments.contains(QLatin1String("--help")) || arguments.contains(QLatin1String("-h"))) {
        std::fputs(qPrintable(usageText()), stdout);
        return 0;
    }
    const bool practises = arguments.removeAll(QStringLiteral("--practise")) > 0;
    const QString name = arguments.value(0, dawName(Daw::ProTools));
    const auto daw = dawOfName(name);
    if (!daw || arguments.size() > 1) {
        std::fprintf(stderr, "velt-rehearsal: cannot stand in for \"%s\"\n\n%s", qPrintable(name),
                     qPrintable(usageText()));
        return kUsageError;
    }
    if (!takeProcessName(name.toLocal8Bit())) {
        std::fputs("velt-rehearsal: this process cannot take the DAW's name\n", stderr);
    }

    setUpQt();
    QApplication application(argc, argv);
    const QuitSignals quitSignals;
    QObject::connect(&quitSignals, &QuitSignals::quitRequested, &application,
                     &QCoreApplication::quit);
    // Destroyed last: closing the ports of a stalled MIDI server takes a while.
    Practice practice;
    RehearsalWindow window(*daw);
    LineReader commands(STDIN_FILENO);
    QObject::connect(&commands, &LineReader::lineRead, &window, &RehearsalWindow::runCommand);
    if (practises) {
        practise(practice, window, *daw);
    }
    window.show();
    return QApplication::exec();
}
