// SPDX-License-Identifier: MIT
#include "displaystatus.h"

#include "settingsfile.h"

#include <QSettings>

namespace {

const QString kWidth = QStringLiteral("Width");
const QString kHeight = QStringLiteral("Height");
const QString kX = QStringLiteral("X");
const QString kY = QStringLiteral("Y");
const QString kColumnWidth = QStringLiteral("ColumnWidth");
const QString kEditWidth = QStringLiteral("EditWidth");
const QString kEditHeight = QStringLiteral("EditHeight");
const QString kEditX = QStringLiteral("EditX");
const QString kEditY = QStringLiteral("EditY");

// No widget is larger, and the edges of a rectangle of such numbers can still be added up.
constexpr qlonglong kMaxPixels = 16'777'215;

int pixels(const QSettings& file, const QString& key)
{
    const qlonglong value = file.value(key).toLongLong();
    return value >= -kMaxPixels && value <= kMaxPixels ? static_cast<int>(value) : 0;
}

} // namespace

DisplayStatus readDisplayStatus(const QString& path)
{
    DisplayStatus status;
    readSettingsFile(path, [&status](const QSettings& file) {
        if (const int width = pixels(file, kWidth)) {
            status.window.setRect(pixels(file, kX), pixels(file, kY), width,
                                  status.window.height());
        }
        if (const int height = pixels(file, kHeight)) {
            status.window.setHeight(height);
        }
        if (const int columnWidth = pixels(file, kColumnWidth)) {
            status.columnWidth = columnWidth;
        }
        if (const int width = pixels(file, kEditWidth)) {
            status.editor.setRect(pixels(file, kEditX), pixels(file, kEditY), width,
                                  pixels(file, kEditHeight));
        }
    });
    return status;
}

void writeDisplayStatus(const QString& path, const DisplayStatus& status)
{
    writeSettingsFile(path, [&status](QSettings& file) {
        file.setValue(kWidth, status.window.width());
        file.setValue(kHeight, status.window.height());
        file.setValue(kX, status.window.x());
        file.setValue(kY, status.window.y());
        file.setValue(kColumnWidth, status.columnWidth);
        file.setValue(kEditWidth, status.editor.width());
        file.setValue(kEditHeight, status.editor.height());
        file.setValue(kEditX, status.editor.x());
        file.setValue(kEditY, status.editor.y());
    });
}
