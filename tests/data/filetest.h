// SPDX-License-Identifier: MIT
#pragma once

#include "testcase.h"

#include <QFile>
#include <QTemporaryDir>

// Base of the tests of files.
class FileTest : public TestCase
{
protected:
    // Each ends a program that gives it to QSettings.
    const QByteArray kHarmfulValues =
        "A=@Variant(\\0\\0\\0\\x47\\x7f\\xff\\xff\\xff)\n"
        "B= \"@Va\"r\\x69\\q\\\r\n\"\\141nt(\\0\\0\\0G\\x7f\\xff\\xff\\xff)\"\n"
        "C=1, \\x40\"DateTime\"(\\0\\0\\0G\\0\\x7f\\xff\\xff\\xff)\n"
        "D=\xef\xbb\xbf@Variant(\\0\\0\\0\\x47\\x7f\\xff\\xff\\xff)\n";

    QString freshPath() { return dir.filePath(QString::number(++count) + ".ini"); }

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
