// SPDX-License-Identifier: MIT
#include "check.h"
#include "displaystatus.h"

// A file of window geometry: whatever it says can be given to a window, and saved, into the same
// file and into a new one, and read again.
int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    constexpr int kMostPixels = 16'777'215; // QWIDGETSIZE_MAX
    const InputFile file(bytes, size);
    const DisplayStatus status = readDisplayStatus(InputFile::path());
    const QRect window = status.window;
    const QRect editor = status.editor;
    for (const int pixels : {window.x(), window.y(), window.width(), window.height(), editor.x(),
                             editor.y(), editor.width(), editor.height(), status.columnWidth}) {
        check(pixels >= -kMostPixels && pixels <= kMostPixels,
              "no widget is larger than Qt's limit");
    }
    check(window.width() != 0 && window.height() != 0 && status.columnWidth != 0,
          "a size that is missing is the default");
    InputFile::checkSaving(readDisplayStatus, writeDisplayStatus);
    return 0;
}
