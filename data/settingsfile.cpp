// SPDX-License-Identifier: MIT
#include "settingsfile.h"

#include "datafiles.h"
#include "serialisedvalues.h"

#include <QFile>
#include <QSaveFile>
#include <QTemporaryFile>

#include <algorithm>
#include <optional>

namespace {

// Nothing if the file cannot be read.
std::optional<QByteArray> contents(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    return file.readAll();
}

// On a disk that gets full, a file can take only a part and tell nobody but by its size.
bool writeAll(QFileDevice& file, const QByteArray& content)
{
    return file.write(content) == content.size() && file.flush() && file.size() == content.size();
}

// The old file stays if there is no room for the new one.
bool replaceContents(const QString& path, const QByteArray& content)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && writeAll(file, content) && file.commit();
}

// A file that the settings class can be trusted with: the one at `path`, or else `copy`. An empty
// name, which reads as no file, if there is no room for the copy.
QString harmlessFile(const QString& path, QTemporaryFile& copy)
{
    const auto harmless = defuseSerialisedValues(contents(path).value_or(QByteArray()));
    if (!harmless) {
        return path;
    }
    return copy.open() && writeAll(copy, *harmless) ? copy.fileName() : QString();
}

// A settings file has one line for each key, besides the headers of its sections. Nothing if the
// last line has no end.
std::optional<int> keyLines(const QByteArray& written)
{
    int lines = 0;
    int end = 0;
    for (int start = 0; start < written.size(); start = end + 1) {
        end = written.indexOf('\n', start);
        if (end < 0) {
            return std::nullopt;
        }
        if (end > start && written.at(start) != '[') {
            ++lines;
        }
    }
    return lines;
}

// True if all keys of a file are in it that has been written with so many keys.
bool isComplete(const QByteArray& written, const QSettings& file, int keyCount)
{
    const auto lines = keyLines(written);
    if (!lines || *lines == keyCount) {
        return lines.has_value();
    }
    // There are keys from before. Such with a slash in front come from damaged files only, and may
    // share a line with the key that lacks it.
    const QStringList keys = file.allKeys();
    return *lines >= std::count_if(keys.begin(), keys.end(), [](const QString& key) {
        return !key.startsWith(QLatin1Char('/'));
    });
}

// When the disk gets full during the last piece of a file, the settings class takes that for a
// success, and replaces the old file by a part of the new one. This puts back the old one, for
// which there is room: it took that room until it was replaced.
void undoPartialWrite(const QSettings& file, int keyCount, const std::optional<QByteArray>& old)
{
    const QString path = file.fileName();
    const auto written = contents(path);
    if (!written || isComplete(*written, file, keyCount)) {
        return;
    }
    if (old) {
        replaceContents(path, *old);
    } else {
        QFile::remove(path);
    }
}

} // namespace

void readSettingsFile(const QString& path, const std::function<void(QSettings&)>& take)
{
    QTemporaryFile copy;
    QSettings file(harmlessFile(path, copy), QSettings::IniFormat);
    take(file);
}

void writeSettingsFile(const QString& path, const std::function<void(SettingsWriter&)>& fill)
{
    removeAbandonedLock(path);
    auto old = contents(path);
    if (const auto harmless = defuseSerialisedValues(old.value_or(QByteArray()))) {
        if (!replaceContents(path, *harmless)) {
            return;
        }
        old = harmless;
    }
    QSettings file(path, QSettings::IniFormat);
    // Values that cannot be written would stay in the settings class's cache, where the next
    // reading would take them for the file's, and write them.
    if (!file.isWritable()) {
        return;
    }
    SettingsWriter writer(file);
    fill(writer);
    file.sync();
    if (file.status() != QSettings::AccessError) {
        undoPartialWrite(file, writer.keyCount(), old);
    }
}
