// SPDX-License-Identifier: MIT
#include "datafiles.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSettings>
#include <QStandardPaths>

#include <algorithm>
#include <new>
#include <optional>

namespace {

// A live process fills the lock it made within microseconds.
constexpr qint64 kAbandonedLockAgeMs = 3000;

QString dataFilePath(QLatin1String name)
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QLatin1Char('/') +
           name;
}

// Nothing if the file cannot be read.
std::optional<QByteArray> contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll();
}

// A settings file has one line for each key, besides the headers of its sections. Keys with a slash
// in front come from damaged files only, and may share a line with the key that lacks it.
bool isComplete(const QByteArray& written, const QStringList& keys)
{
    const auto fewestLines = std::count_if(keys.begin(), keys.end(), [](const QString& key) {
        return !key.startsWith(QLatin1Char('/'));
    });
    int lines = 0;
    int end = 0;
    for (int start = 0; start < written.size(); start = end + 1) {
        end = written.indexOf('\n', start);
        if (end < 0) {
            return false;
        }
        if (end > start && written.at(start) != '[') {
            ++lines;
        }
    }
    return lines >= fewestLines;
}

// When the disk gets full during the last piece of a file, the settings class takes that for a
// success, and replaces the old file by a part of the new one. This puts back the old one, for
// which there is room: it took that room until it was replaced.
void undoPartialWrite(const QString& path, const QStringList& keys,
                      const std::optional<QByteArray>& old)
{
    const auto written = contents(path);
    if (!written || isComplete(*written, keys)) {
        return;
    }
    if (!old) {
        QFile::remove(path);
        return;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(*old) == old->size() && file.flush() &&
        file.size() == old->size()) {
        file.commit();
    }
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

void readSettingsFile(const QString& path, const std::function<void(QSettings&)>& take)
{
    try {
        QSettings file(path, QSettings::IniFormat);
        take(file);
    } catch (const std::bad_alloc&) {
        // A damaged value claims more memory than there is, and the settings class believed it.
        QSettings nothing(QString(), QSettings::IniFormat);
        take(nothing);
    }
}

void writeSettingsFile(const QString& path, const std::function<void(QSettings&)>& fill)
{
    removeAbandonedLock(path);
    const auto old = contents(path);
    try {
        QSettings file(path, QSettings::IniFormat);
        // Values that cannot be written would stay in the settings class's cache, where the next
        // reading would take them for the file's, and write them.
        if (!file.isWritable()) {
            return;
        }
        fill(file);
        file.sync();
        if (file.status() != QSettings::AccessError) {
            undoPartialWrite(path, file.allKeys(), old);
        }
    } catch (const std::bad_alloc&) {
        // A damaged value of the old file claims more memory than there is, so that its other keys
        // cannot be carried over: like any file that cannot be written, it stays as it is.
    }
}

void removeAbandonedLock(const QString& settingsPath)
{
    const QFileInfo lock(settingsPath + QLatin1String(".lock"));
    if (lock.isFile() && lock.size() == 0 &&
        lock.lastModified().msecsTo(QDateTime::currentDateTime()) > kAbandonedLockAgeMs) {
        QFile::remove(lock.filePath());
    }
}
