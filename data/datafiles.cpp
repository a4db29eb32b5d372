// SPDX-License-Identifier: MIT
#include "datafiles.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

// A live process fills the lock it made within microseconds.
constexpr qint64 kAbandonedLockAgeMs = 3000;

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
    const QFileInfo lock(settingsPath + QLatin1String(".lock"));
    if (lock.isFile() && lock.size() == 0 &&
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) > kAbandonedLockAgeMs) {
        QFile::remove(lock.filePath());
    }
}
