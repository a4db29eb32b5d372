// SPDX-License-Identifier: MIT
#include "report.h"

#include <cstdio>

void Report::fault(const QString& done, const QString& expected,
                   const std::function<QString()>& act)
{
    QString happened;
    bool isAsExpected = true;
    try {
        happened = act();
    } catch (const NotAsExpected& failure) {
        happened = QString::fromUtf8(failure.what());
        isAsExpected = false;
        hasFailed = true;
    }
    std::printf("%s  %s | %s | %s\n", isAsExpected ? "PASS" : "FAIL", qPrintable(done),
                qPrintable(expected), qPrintable(happened));
    std::fflush(stdout);
}

void Report::skip(const QString& done, const QString& why)
{
    std::printf("SKIP  %s | %s\n", qPrintable(done), qPrintable(why));
    std::fflush(stdout);
}
