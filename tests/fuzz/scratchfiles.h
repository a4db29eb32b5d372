// SPDX-License-Identifier: MIT
#pragma once

#include "check.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

// The files of one input, removed with the object.
class ScratchFiles
{
public:
    QString freshPath()
    {
        static int count = 0;
        return dir().filePath(QString::number(++count) + QStringLiteral(".ini"));
    }

    QString fileWith(const std::uint8_t* bytes, std::size_t size)
    {
        const auto length = static_cast<qint64>(size);
        QFile file(freshPath());
        check(file.open(QIODevice::WriteOnly) &&
                  file.write(reinterpret_cast<const char*>(bytes), length) == length,
              "the scratch directory takes files");
        return file.fileName();
    }

    QString copyOf(const QString& path)
    {
        QString copy = freshPath();
        check(QFile::copy(path, copy), "what was saved is there");
        return copy;
    }

    ScratchFiles() = default;
    ~ScratchFiles()
    {
        for (const QString& name : QDir(dir().path()).entryList(QDir::Files)) {
            QFile::remove(dir().filePath(name));
        }
    }
    Q_DISABLE_COPY_MOVE(ScratchFiles)

private:
    static const QTemporaryDir& dir()
    {
        static const QTemporaryDir instance;
        return instance;
    }
};
