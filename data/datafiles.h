// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the program's three files live: the user's configuration directory of the application
// (QStandardPaths::AppConfigLocation). Nothing here creates the directory; the first write does.

QString setListFilePath();    // "VELTSetting.ini": songs, shows and set lists
QString setListBackupPath();  // "VELTSetting-backup.ini": the former before the first save of a run
QString preferenceFilePath(); // "VELTPreference.ini": the preferences
QString displayStatusFilePath(); // "DispStatus.ini": window geometry
