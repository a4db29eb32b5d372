// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include <functional>

// How the program's INI files are read and written through the toolkit's settings class, so that
// neither a damaged file nor a full disk does harm. Main thread only.

// Reads an INI file: `take` gets the values. A file that is missing or cannot be read reads as one
// without keys; a serialised value that is no colour reads as text. The file is neither written nor
// created.
void readSettingsFile(const QString& path, const std::function<void(QSettings&)>& take);

// Takes the values of a file that is written; each key once.
class SettingsWriter
{
public:
    explicit SettingsWriter(QSettings& settings) : file(settings) {}

    void setValue(const QString& key, const QVariant& value)
    {
        file.setValue(key, value);
        ++keys;
    }
    [[nodiscard]] int keyCount() const { return keys; }

private:
    QSettings& file;
    int keys = 0;
};

// Writes an INI file: `fill` sets the values, and they are on the disk on return. Keys that `fill`
// does not set stay in the file. Failures are silent and leave the old values in the file, also on
// a disk that gets full. May wait for a live process that is writing the same file.
void writeSettingsFile(const QString& path, const std::function<void(SettingsWriter&)>& fill);
