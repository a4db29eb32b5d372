// SPDX-License-Identifier: MIT
#include "processinfo.h"

#include <QFile>
#include <QList>

namespace {

constexpr int kKernelNameBytes = 15;
constexpr int kStartTimeField = 19; // Counted from 0 behind the name; field 22 in proc(5).

QString path(pid_t pid, const char* file)
{
    return QStringLiteral("/proc/%1/%2").arg(pid).arg(QLatin1String(file));
}

QByteArray contents(pid_t pid, const char* file)
{
    QFile opened(path(pid, file));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
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
    const QByteArray program = baseName(QFile::encodeName(QFile::symLinkTarget(path(pid, "exe"))));
    return program.startsWith(name) ? program : name;
}

} // namespace

std::optional<quint64> processStartTime(pid_t pid)
{
    // The name stands in parentheses and may itself hold any character.
    const QByteArray status = contents(pid, "stat");
    const QList<QByteArray> fields = status.mid(status.lastIndexOf(')') + 2).split(' ');
    if (fields.size() <= kStartTimeField) {
        return std::nullopt;
    }
    return fields[kStartTimeField].toULongLong();
}

std::optional<QString> processName(pid_t pid)
{
    QByteArray name = contents(pid, "comm");
    name.chop(1); // The line feed behind it.
    if (name.size() == kKernelNameBytes) {
        name = completeName(pid, name);
    }
    if (name.endsWith(".exe")) {
        name.chop(4);
    }
    return name.isEmpty() ? std::nullopt : std::optional(QString::fromUtf8(name));
}
