// SPDX-License-Identifier: MIT
#include "displaystatus.h"

#include "settingsfile.h"

#include <QSettings>

#include <utility>

namespace {

// No widget is larger, and the edges of a rectangle of such numbers can still be added up.
constexpr qlonglong kMaxPixels = 16'777'215;

int pixels(const QSettings& file, const char* key)
{
    const qlonglong value = file.value(QLatin1String(key)).toLongLong();
    return value >= -kMaxPixels && value <= kMaxPixels ? static_cast<int>(value) : 0;
}

} // namespace

DisplayStatus readDisplayStatus(const QString& path)
{
    DisplayStatus status;
    readSettingsFile(path, [&status](const QSettings& file) {
        if (const int width = pixels(file, "Width")) {
            status.window.setRect(pixels(file, "X"), pixels(file, "Y"), width,
                                  status.window.height());
        }
        if (const int height = pixels(file, "Height")) {
            status.window.setHeight(height);
        }
        if (const int columnWidth = pixels(file, "ColumnWidth")) {
            status.columnWidth = columnWidth;
        }
        if (const int width = pixels(file, "EditWidth")) {
            status.editor.setRect(pixels(file, "EditX"), pixels(file, "EditY"), width,
                                  pixels(file, "EditHeight"));
        }
    });
    return status;
}

void writeDisplayStatus(const QString& path, const DisplayStatus& status)
{
    writeSettingsFile(path, [&status](QSettings& file) {
        const std::pair<const char*, int> values[] = {{"Width", status.window.width()},
                                                      {"Height", status.window.height()},
                                                      {"X", status.window.x()},
                                                      {"Y", status.window.y()},
                                                      {"ColumnWidth", status.columnWidth},
                                                      {"EditWidth", status.editor.width()},
                                                      {"EditHeight", status.editor.height()},
                                                      {"EditX", status.editor.x()},
                                                      {"EditY", status.editor.y()}};
        for (const auto& [key, value] : values) {
            file.setValue(QLatin1String(key), value);
        }
    });
}
