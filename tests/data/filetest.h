// SPDX-License-Identifier: MIT
#pragma once

#include "testcase.h"

#include <QFile>
#include <QTemporaryDir>

// Base of the tests of files. The settings class answers from a cache by path, so that only the
// bytes, or a copy under a path of its own, tell what is on the disk.
class FileTest : public TestCase
{
protected:
    // A value of the settings class's own form that claims to be 16 GB large.
    const QByteArray kHugeValue = "A=@Variant(\\0\\0\\0\\x9\\x7f\\xff\\xff\\xff)\n";

    QString freshPath() { return dir.filePath(QString::number(++count) + QLatin1String(".ini")); }

    QString fileWith(const QByteArray& content)
    {
        QFile file(freshPath());
        file.open(QIODevice::WriteOnly);
        file.write(content);
        return file.fileName();
    }

    static QByteArray bytes(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir dir;

private:
    int count = 0;
};
