// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

// Where the program's three files live: the user's configuration directory of the application
// (QStandardPaths::AppConfigLocation). Nothing here creates the directory; the first write does.

QString setListFilePath();       // "VELTSetting.ini": songs, shows and set lists
QString preferenceFilePath();    // "VELTPreference.ini": the preferences
QString displayStatusFilePath(); // "DispStatus.ini": window geometry

// Removes the lock file beside a settings file that a killed process left behind empty. An empty
// lock belongs to nobody, but the settings class would wait for it for half a minute before it
// writes. Call before every write, as writeSettingsFile() does; a lock that a live process holds or
// is just making is left. Takes a tenth of a second where there is such a lock, else no time.
void removeAbandonedLock(const QString& settingsPath);
