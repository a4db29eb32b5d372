// SPDX-License-Identifier: MIT
#include "datafiles.h"

#include <QStandardPaths>

namespace {

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

QString setListBackupPath()
{
    return dataFilePath(QLatin1String("VELTSetting-backup.ini"));
}

QString preferenceFilePath()
{
    return dataFilePath(QLatin1String("VELTPreference.ini"));
}

QString displayStatusFilePath()
{
    return dataFilePath(QLatin1String("DispStatus.ini"));
}
