// SPDX-License-Identifier: MIT
#pragma once

#include "datafiles.h"
#include "recordingplatform.h"
#include "testcase.h"
#include "windowdriver.h"

#include <QFile>

// Where the DAWs stand in the list of applications that every test function starts with.
constexpr int kProTools = 1;
constexpr int kStudioOne = 2;

// How the rows of the sample show can look.
const QStringList kPlain{"plain", "space", "plain", "plain"};
const QStringList kFirstSent{"sent", "space", "next", "plain"};
const QStringList kSecondSent{"plain", "space", "sent", "next"};

// Base of the tests of the operator window: keys go to the recording platform layer, on which
// three applications run.
class AppTestCase : public TestCase
{
    Q_OBJECT

protected slots:
    void init()
    {
        TestCase::init();
        Recording::reset();
        Recording::setApplications({"Finder", "Pro Tools", "Studio One"});
    }

protected:
    // What locating a bar by "Pro Tools" types, the digits as keypad keys.
    static Recording::Events bar(const QVector<int>& digits)
    {
        return Recording::Events{Recording::pause(100000)} +
               Recording::presses(kProTools, QVector<int>{0x51} + digits + QVector<int>{0x4C});
    }
    static QByteArray setListFile()
    {
        QFile file(setListFilePath());
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }
};
