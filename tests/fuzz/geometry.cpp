// SPDX-License-Identifier: MIT
#include "displaystatus.h"
#include "scratchfiles.h"

#include <initializer_list>

// A file of window geometry: whatever it says can be given to a window, and saved, into the same
// file and into a new one, and read again.

namespace {

constexpr int kMostPixels = 16'777'215; // QWIDGETSIZE_MAX

void checkRange(std::initializer_list<int> pixels)
{
    for (const int value : pixels) {
        check(value >= -kMostPixels && value <= kMostPixels, "no widget is larger than Qt's limit");
    }
}

void checkSaving(const DisplayStatus& status, const QString& path, ScratchFiles& files)
{
    writeDisplayStatus(path, status);
    const DisplayStatus again = readDisplayStatus(files.copyOf(path));
    check(again.window == status.window && again.columnWidth == status.columnWidth &&
              again.editor == status.editor,
          "what was saved reads back");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    ScratchFiles files;
    const QString path = files.fileWith(bytes, size);
    const DisplayStatus status = readDisplayStatus(path);
    for (const QRect& rect : {status.window, status.editor}) {
        checkRange({rect.x(), rect.y(), rect.width(), rect.height()});
    }
    checkRange({status.columnWidth});
    check(status.window.width() != 0 && status.window.height() != 0 && status.columnWidth != 0,
          "a size that is missing is the default");
    checkSaving(status, path, files);
    checkSaving(status, files.freshPath(), files);
    return 0;
}
