// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include <functional>

// Reads and writes the program's INI files with QSettings, so that neither a damaged file, a full
// disk nor a killed program does harm. Main thread only.
//
// QSettings keeps what it reads and sets in a cache by path, also what it could not write. So it
// gets only paths that were never used before: it reads a copy in memory and writes a staged copy
// beside the file, which then replaces the file.

// Whether an INI file can be read, and written by writeSettingsFile(). Changes nothing.
enum class SettingsFileState {
    Missing, // It can be made.
    Usable,
    Unreadable,
    ReadOnly, // It, or the directory that it lies or is to lie in.
    DiskFull,
};
SettingsFileState settingsFileState(const QString& path);

// Reads an INI file as it is on the disk: `take` gets the values. A file that is missing or cannot
// be read reads as one without keys; a serialised value that is no colour reads as text. A line
// that is no UTF-8 is taken for Latin-1.
void readSettingsFile(const QString& path, const std::function<void(const QSettings&)>& take);

// Writes an INI file: `fill` sets the values. Returns true if the file now has them; otherwise it
// is as it was. Keys that `fill` does not set stay in the file, and so do its permissions; of
// a symbolic link, the target is replaced. Creates the directory. A file at `path` is first copied
// to `backupPath`, if that is not empty; a copy that fails stops nothing.
//
// Waits up to `lockPatienceMs` for another process that saves in the directory. A process that is
// killed at any time leaves the old file or the new one, and nothing that the next save in the
// directory does not remove.
bool writeSettingsFile(const QString& path, const std::function<void(QSettings&)>& fill,
                       const QString& backupPath = {}, int lockPatienceMs = 5000);
