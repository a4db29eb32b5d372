// SPDX-License-Identifier: MIT
#include "settingsfile.h"

#include "serialisedvalues.h"

#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QResource>
#include <QStorageInfo>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <optional>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr unsigned long kLockPollMs = 5;

// Sorts after all other keys, so that QSettings writes it last.
const QString kEndKey = QString(QChar(0xffff)) + QLatin1Char('/') + QChar(0xffff);
constexpr char kEndMark[] = "\n[%UFFFF]\n%UFFFF=0\n";
constexpr int kEndMarkSize = sizeof kEndMark - 1;

constexpr char kUtf8Mark[] = "\xef\xbb\xbf";

int uniqueNumber()
{
    static int count = 0;
    return ++count;
}

// Nothing if there is no such file, or it cannot be read.
std::optional<QByteArray> contents(const QString& path)
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        return std::nullopt;
    }
    QByteArray content = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(std::move(content)) : std::nullopt;
}

// Also what is no UTF-8: that is taken for Latin-1.
QByteArray inUtf8(const QByteArray& bytes)
{
    const int size = static_cast<int>(bytes.size());
    const bool isUtf8 = QString::fromUtf8(bytes.constData(), size).toUtf8() == bytes;
    return isUtf8 ? bytes : QString::fromLatin1(bytes.constData(), size).toUtf8();
}

// The content of an INI file in UTF-8, with a mark by which QSettings of Qt 5 knows it. Written by
// Qt 6 it is in UTF-8 already, by Qt 5 in ASCII; what a person wrote may be in Latin-1. Each line
// is judged alone: a damaged byte garbles no other.
QByteArray inMarkedUtf8(const QByteArray& content)
{
    const auto isAscii = [](char byte) { return static_cast<signed char>(byte) >= 0; };
    if (std::all_of(content.cbegin(), content.cend(), isAscii)) {
        return content;
    }
    QByteArray result(kUtf8Mark);
    auto start = content.startsWith(kUtf8Mark) ? result.size() : 0;
    while (start < content.size()) {
        // With the line feed in front, so that a mark in a later line is not skipped.
        const auto end = content.indexOf('\n', start + 1);
        result += inUtf8(content.mid(start, end < 0 ? -1 : end - start));
        start = end < 0 ? content.size() : end;
    }
    return result;
}

// The content of an INI file as QSettings gets it.
QByteArray forQSettings(const QByteArray& content)
{
    return escapeSerialisedValues(inMarkedUtf8(content));
}

// The file itself, where `path` may be a symbolic link to it. It need not exist yet.
QString linkTarget(const QString& path)
{
    const QFileInfo file(path);
    const QString existing = file.canonicalFilePath();
    return !existing.isEmpty() ? existing : file.isSymLink() ? file.symLinkTarget() : path;
}

// A file in memory, under a unique name, that QSettings can open: a Qt resource.
class MemoryFile
{
public:
    explicit MemoryFile(QByteArray content);
    ~MemoryFile() { QResource::unregisterResource(data(), name); }
    Q_DISABLE_COPY_MOVE(MemoryFile)

    [[nodiscard]] QString path() const { return QLatin1Char(':') + name; }

private:
    [[nodiscard]] const uchar* data() const
    {
        return reinterpret_cast<const uchar*>(resource.constData());
    }

    QString name = QStringLiteral("/settings/%1").arg(uniqueNumber());
    QByteArray resource;
};

// The layout is that of `rcc -binary`, version 1: a header, a tree of one node, the content.
MemoryFile::MemoryFile(QByteArray content) : resource(std::move(content))
{
    constexpr qint32 kVersion = 1;
    constexpr qint32 kTreeOffset = 20;
    constexpr qint32 kContentOffset = kTreeOffset + 14;
    QByteArray head;
    QDataStream out(&head, QIODevice::WriteOnly);
    out.writeRawData("qres", 4);
    out << kVersion << kTreeOffset << kContentOffset << kTreeOffset;
    out << qint32(0) << qint16(0) << qint16(0) << qint16(0) << qint32(0); // A file without a name.
    out << static_cast<qint32>(resource.size());
    resource.prepend(head);
    QResource::registerResource(data(), name);
}

// Keeps other processes from saving in a directory. The system releases it when the process ends,
// so no lock is ever left.
class SaveLock
{
public:
    SaveLock(const QString& directory, int patienceMs)
        : fd(::open(QFile::encodeName(directory).constData(), O_RDONLY | O_CLOEXEC))
    {
        const QDeadlineTimer end(patienceMs);
        while (flock(fd, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK && !isTimedOut) {
            QThread::msleep(kLockPollMs);
            isTimedOut = end.hasExpired();
        }
    }
    ~SaveLock() { ::close(fd); }
    Q_DISABLE_COPY_MOVE(SaveLock)

    // True also where the file system has no locks.
    [[nodiscard]] bool isHeld() const { return !isTimedOut; }

private:
    int fd;
    bool isTimedOut = false;
};

// Where files are written before they replace those beside it. Removes what a killed process left.
class StagingDirectory
{
public:
    explicit StagingDirectory(const QString& parent) : dir(parent + QLatin1String("/.velt-save"))
    {
        QFile::remove(dir.path()); // A link, which must not be followed.
        dir.removeRecursively();
        QDir().mkpath(dir.path());
    }
    ~StagingDirectory() { dir.removeRecursively(); }
    Q_DISABLE_COPY_MOVE(StagingDirectory)

    // A name that QSettings has not seen, and that no process uses where there are no locks.
    [[nodiscard]] QString freshPath() const
    {
        return dir.filePath(QStringLiteral("%1-%2").arg(getpid()).arg(uniqueNumber()));
    }

private:
    QDir dir;
};

// On a full disk a write can take only a part; only the file's size shows it.
bool writeWhole(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush() && file.size() == content.size();
}

bool replaceFile(const QString& staged, const QString& path)
{
    QFile file(staged);
    if (!file.open(QIODevice::ReadOnly) || fsync(file.handle()) != 0) {
        return false;
    }
    if (const QFileInfo old(path); old.exists()) {
        file.setPermissions(old.permissions());
    }
    return std::rename(QFile::encodeName(staged).constData(),
                       QFile::encodeName(path).constData()) == 0;
}

void makeBackup(const QByteArray& content, const QString& path)
{
    const StagingDirectory staging(QFileInfo(path).path());
    const QString staged = staging.freshPath();
    if (writeWhole(staged, content)) {
        replaceFile(staged, path);
    }
}

// QSettings reports success even if the disk is full before its last bytes. A file that ends with
// the end mark is whole.
bool cutEndMark(const QString& path)
{
    QFile file(path);
    const qint64 size = file.size() - kEndMarkSize;
    return file.open(QIODevice::ReadWrite) && file.seek(size) && file.readAll() == kEndMark &&
           file.resize(size);
}

bool writeValues(const QString& path, const std::function<void(QSettings&)>& fill)
{
    QSettings file(path, QSettings::IniFormat);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    if (file.iniCodec()) { // For UTF-8. With it, QSettings cannot write emoji.
        file.allKeys();    // Decodes what the file has.
        file.setIniCodec(static_cast<QTextCodec*>(nullptr));
    }
#endif
    fill(file);
    file.setValue(kEndKey, 0);
    file.sync();
    return file.status() != QSettings::AccessError && cutEndMark(path);
}

} // namespace

SettingsFileState settingsFileState(const QString& path)
{
    const QString target = linkTarget(path);
    const QFileInfo file(target);
    QFileInfo directory(file.path());
    while (!directory.exists() && !directory.isRoot()) { // A save makes those that are missing.
        directory.setFile(directory.path());
    }
    if (file.exists() && !contents(target)) {
        return SettingsFileState::Unreadable;
    }
    if ((file.exists() && !file.isWritable()) || !directory.isDir() || !directory.isWritable() ||
        !directory.isExecutable()) {
        return SettingsFileState::ReadOnly;
    }
    if (QStorageInfo(directory.filePath()).bytesAvailable() == 0) {
        return SettingsFileState::DiskFull;
    }
    return file.exists() ? SettingsFileState::Usable : SettingsFileState::Missing;
}

void readSettingsFile(const QString& path, const std::function<void(const QSettings&)>& take)
{
    const MemoryFile copy(forQSettings(contents(path).value_or(QByteArray())));
    take(QSettings(copy.path(), QSettings::IniFormat));
}

bool writeSettingsFile(const QString& path, const std::function<void(QSettings&)>& fill,
                       const QString& backupPath, int lockPatienceMs)
{
    const QString target = linkTarget(path);
    const QString directory = QFileInfo(target).path();
    QDir().mkpath(directory);
    const SaveLock lock(directory, lockPatienceMs);
    if (!lock.isHeld()) {
        return false;
    }
    const auto old = contents(target);
    if (const QFileInfo file(target); file.exists() && !(old && file.isWritable())) {
        return false;
    }
    if (old && !backupPath.isEmpty()) {
        makeBackup(*old, backupPath);
    }
    const StagingDirectory staging(directory);
    const QString staged = staging.freshPath();
    return (!old || writeWhole(staged, forQSettings(*old))) && writeValues(staged, fill) &&
           replaceFile(staged, target);
}
