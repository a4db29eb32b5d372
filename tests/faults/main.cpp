// SPDX-License-Identifier: MIT
#include "faults.h"
#include "report.h"
#include "servers.h"

#include <QCoreApplication>

// What fails around the running program, with real servers and a stand-in DAW. All that it starts
// ends with it.
int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const XServer display(QStringLiteral("1440x900x24"));
    if (!display.isRunning()) {
        Report::skip(QStringLiteral("all faults of a show"), display.why());
        return 0;
    }
    qputenv("DISPLAY", display.display().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "xcb");
    Report report;
    midiServerFaults(report);
    dawFaults(report);
    fileFaults(report);
    return report.exitCode();
}
