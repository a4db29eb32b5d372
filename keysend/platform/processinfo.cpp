// SPDX-License-Identifier: MIT
#include "processinfo.h"

#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int kKernelNameBytes = 15;
constexpr int kStartTimeField = 19; // Counted from 0 after the name; field 22 in proc(5).

QByteArray path(pid_t pid, const char* file)
{
    return "/proc/" + QByteArray::number(pid) + '/' + file;
}

// Up to 4 kB, which is more than is looked at; asked at every key, so without a stream's cost.
QByteArray contents(pid_t pid, const char* file)
{
    char text[4096];
    const int opened = ::open(path(pid, file).constData(), O_RDONLY | O_CLOEXEC);
    const ssize_t length = ::read(opened, text, sizeof text);
    ::close(opened);
    return {text, length > 0 ? static_cast<int>(length) : 0};
}

// Programs under Wine have a Windows path as their command.
QByteArray baseName(const QByteArray& filePath)
{
    return filePath.mid(std::max(filePath.lastIndexOf('/'), filePath.lastIndexOf('\\')) + 1);
}

QByteArray completeName(pid_t pid, const QByteArray& name)
{
    const QByteArray command = contents(pid, "cmdline");
    QByteArray argument = baseName(command.left(command.indexOf('\0')));
    if (argument.startsWith(name)) {
        return argument;
    }
    const QString link = QFile::decodeName(path(pid, "exe"));
    const QByteArray program = baseName(QFile::encodeName(QFile::symLinkTarget(link)));
    return program.startsWith(name) ? program : name;
}

} // namespace

quint64 processStartTime(pid_t pid)
{
    // The name stands in parentheses and may itself hold any character.
    const QByteArray status = contents(pid, "stat");
    return status.mid(status.lastIndexOf(')') + 2).split(' ').value(kStartTimeField).toULongLong();
}

QByteArray processName(pid_t pid)
{
    QByteArray name = contents(pid, "comm");
    name.chop(1); // The line feed after it.
    if (name.size() == kKernelNameBytes) {
        name = completeName(pid, name);
    }
    if (name.endsWith(".exe")) {
        name.chop(4);
    }
    return name;
}
