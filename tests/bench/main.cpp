// SPDX-License-Identifier: MIT
#include "benchmarks.h"
#include "comparison.h"
#include "servers.h"

#include <QApplication>
#include <QLoggingCategory>
#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    const XServer display;
    if (!display.isRunning()) {
        std::printf("velt-bench: %s\n", qPrintable(display.why()));
        return 1;
    }
    const QTemporaryDir configHome;
    qputenv("DISPLAY", display.display().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_XCB_GL_INTEGRATION", "none"); // As the program does.
    qputenv("XDG_CONFIG_HOME", configHome.path().toLocal8Bit());
    const QApplication application(argc, argv);
    QApplication::setApplicationName("VELT");
    const JackServer midi;
    if (!midi.isRunning()) {
        std::printf("velt-bench: %s\n", qPrintable(midi.why()));
        return 1;
    }

    QLoggingCategory::setFilterRules("*.debug=false");
    // The program traces each note on file descriptor 1. The table goes to a copy of it.
    stdout = fdopen(dup(STDOUT_FILENO), "w");
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    mallopt(M_TRIM_THRESHOLD, 1 << 30); // What one side frees must not be the other's page faults.
    benchmark::Initialize(&argc, argv);
    addStartup();
    addLocate();
    addNotes();
    addFiles();
    addTables();
    TableReporter table;
    const bool hasRun = benchmark::RunSpecifiedBenchmarks(&table) > 0;
    return hasRun && table.areTargetsMet() ? 0 : 1;
}
