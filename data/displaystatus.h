// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QString>

// The window geometry that survives a restart, in pixels, without window frames.
struct DisplayStatus
{
    QRect window{100, 100, 500, 800};
    int columnWidth = 180; // of the set-list table's first column
    QRect editor;          // null width: the editor keeps its own size and place
};

// Reads the geometry file. Missing, zero or ill-typed values give the defaults above; a window
// width of 0 also puts the window back to 100, 100.
DisplayStatus readDisplayStatus(const QString& path);

// Writes the geometry file and syncs it to the disk. Failures are silent; the old file stays.
void writeDisplayStatus(const QString& path, const DisplayStatus& status);
