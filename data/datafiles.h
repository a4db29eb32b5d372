// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

class QSettings;

// Where the program's three files live: the user's configuration directory of the application
// (QStandardPaths::AppConfigLocation). Nothing here creates the directory; the first write does.

QString setListFilePath();       // "VELTSetting.ini": songs, shows and set lists
QString preferenceFilePath();    // "VELTPreference.ini": the preferences
QString displayStatusFilePath(); // "DispStatus.ini": window geometry

// Reads an INI file: `take` gets the values. A file that is missing, or that the settings class
// cannot take in, reads as one without keys. The file is not written and not created.
void readSettingsFile(const QString& path, const std::function<void(QSettings&)>& take);

// Writes an INI file: `fill` sets the values, and they are on the disk on return. Keys that `fill`
// does not set stay in the file. Failures are silent and leave the old file as it was, also on a
// disk that gets full. May wait for a live process that is writing the same file.
void writeSettingsFile(const QString& path, const std::function<void(QSettings&)>& fill);

// Removes the lock file beside a settings file that a killed process left behind empty. An empty
// lock belongs to nobody, but the settings class would wait for it for half a minute before it
// writes. A lock that a live process holds or is just making is left. writeSettingsFile() calls it;
// code that writes a settings file without that function has to.
void removeAbandonedLock(const QString& settingsPath);
