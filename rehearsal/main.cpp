// SPDX-License-Identifier: MIT
#include "process.h"
#include "rehearsalwindow.h"
#include "usage.h"

#include <QApplication>

#include <cstdio>
#include <unistd.h>

namespace {

constexpr int kUsageError = 2;

} // namespace

int main(int argc, char** argv)
{
    settleStandardStreams();
    const QString name = argc > 1 ? QString::fromLocal8Bit(argv[1]) : dawName(Daw::ProTools);
    if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
        std::fputs(qPrintable(usageText()), stdout);
        return 0;
    }
    const auto daw = dawOfName(name);
    if (!daw || argc > 2) {
        std::fprintf(stderr, "velt-rehearsal: cannot stand in for \"%s\"\n\n%s", qPrintable(name),
                     qPrintable(usageText()));
        return kUsageError;
    }
    if (!takeProcessName(name.toLocal8Bit())) {
        std::fputs("velt-rehearsal: this process cannot take the workstation's name\n", stderr);
    }

    if (!qEnvironmentVariableIsSet("QT_XCB_GL_INTEGRATION")) {
        // Nothing here is drawn with OpenGL, whose libraries would take most of the memory.
        qputenv("QT_XCB_GL_INTEGRATION", "none");
    }
    QApplication application(argc, argv);
    const QuitOnSignals quitOnSignals;
    RehearsalWindow window(*daw);
    LineReader commands(STDIN_FILENO);
    QObject::connect(&commands, &LineReader::lineRead, &window, &RehearsalWindow::runCommand);
    window.show();
    return QApplication::exec();
}
