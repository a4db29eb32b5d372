// SPDX-License-Identifier: MIT
#include "datafiles.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QThread>

namespace {

// A live process fills the lock it made within microseconds, unless the machine holds it up.
constexpr qint64 kLockFillMs = 100;
constexpr unsigned long kLockPollMs = 5;

QString dataFilePath(QLatin1String name)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QLatin1Char('/') +
           name;
}

} // namespace

QString setListFilePath()
{
    return dataFilePath(QLatin1String("VELTSetting.ini"));
}

QString preferenceFilePath()
{
    return dataFilePath(QLatin1String("VELTPreference.ini"));
}

QString displayStatusFilePath()
{
    return dataFilePath(QLatin1String("DispStatus.ini"));
}

void removeAbandonedLock(const QString& settingsPath)
{
    QFileInfo lock(settingsPath + QLatin1String(".lock"));
    lock.setCaching(false);
    QElapsedTimer watched;
    watched.start();
    while (lock.isFile() && lock.size() == 0) {
        if (watched.hasExpired(kLockFillMs)) {
            QFile::remove(lock.filePath());
            return;
        }
        QThread::msleep(kLockPollMs);
    }
}
