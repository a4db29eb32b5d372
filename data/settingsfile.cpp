// SPDX-License-Identifier: MIT
#include "settingsfile.h"

#include "datafiles.h"
#include "serialisedvalues.h"

#include <QFile>
#include <QSaveFile>
#include <QTemporaryFile>

#include <algorithm>
#include <array>
#include <optional>

namespace {

constexpr std::size_t kPieceBytes = 1 << 16;

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

// A settings file has one line for each key, besides the headers of its sections.
struct KeyLines
{
    int count = 0;
    bool isLastWhole = true;
};

// Nothing if the file cannot be read. In pieces on the stack: at a large block, the heap puts
// together all that the settings class has freed.
std::optional<KeyLines> keyLines(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return std::nullopt;
    }
    KeyLines lines;
    std::array<char, kPieceBytes> piece;
    for (qint64 size = 0; (size = file.read(piece.data(), piece.size())) > 0;) {
        const char* const end = piece.data() + size;
        for (const char* at = piece.data(); at != end;) {
            if (lines.isLastWhole && *at != '\n' && *at != '[') {
                ++lines.count;
            }
            at = std::find(at, end, '\n');
            lines.isLastWhole = at != end;
            at += lines.isLastWhole ? 1 : 0;
        }
    }
    return lines;
}

// True if all keys of a file are in it that has been written with so many keys.
bool isComplete(const KeyLines& lines, const QSettings& file, int keyCount)
{
    if (!lines.isLastWhole || lines.count == keyCount) {
        return lines.isLastWhole;
    }
    // There are keys from before. Such with a slash in front come from damaged files only, and may
    // share a line with the key that lacks it.
    const QStringList keys = file.allKeys();
    return lines.count >= std::count_if(keys.begin(), keys.end(), [](const QString& key) {
               return !key.startsWith(QLatin1Char('/'));
           });
}

// When the disk gets full during the last piece of a file, the settings class takes that for a
// success, and replaces the old file by a part of the new one. This puts back the old one, which
// stays on the disk while it is open; once it has been read and closed, there is room for it.
void undoPartialWrite(const QSettings& file, int keyCount, QFile& old)
{
    const QString path = file.fileName();
    const auto written = keyLines(path);
    if (!written || isComplete(*written, file, keyCount)) {
        return;
    }
    if (old.isOpen()) {
        const QByteArray content = old.readAll();
        const bool isWhole = content.size() == old.size();
        old.close();
        if (isWhole) { // Nothing read is worse than a part of the new one.
            replaceContents(path, content);
        }
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
    if (const auto harmless = defuseSerialisedValues(contents(path).value_or(QByteArray()))) {
        if (!replaceContents(path, *harmless)) {
            return;
        }
    }
    QFile old(path);
    old.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
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
