// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QTemporaryDir>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What a fuzz target is to define: called with one input after the other. It ends the program where
// one does what it must not.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

// Ends the program, which the fuzzer takes for a finding, unless what must be so is so.
inline void check(bool isSo, const char* whatMustBeSo)
{
    if (!isSo) {
        std::fprintf(stderr, "not so: %s\n", whatMustBeSo);
        std::abort();
    }
}

// A file of the input's bytes, for the reader that is tested.
class InputFile
{
public:
    InputFile(const std::uint8_t* bytes, std::size_t size)
    {
        const auto length = static_cast<qint64>(size);
        QFile file(path());
        check(file.open(QIODevice::WriteOnly) &&
                  file.write(reinterpret_cast<const char*>(bytes), length) == length,
              "the scratch directory takes files");
    }
    ~InputFile()
    {
        QFile::remove(path());
        QFile::remove(freshPath());
    }
    Q_DISABLE_COPY_MOVE(InputFile)

    static QString path() { return dir().filePath(QStringLiteral("input.ini")); }

    // Calls `check` with a path to save to and read from: of the input's file, and of a new one.
    template <typename Check>
    static void save(const Check& check)
    {
        check(path());
        check(freshPath());
    }

private:
    static QString freshPath() { return dir().filePath(QStringLiteral("fresh.ini")); }

    static const QTemporaryDir& dir()
    {
        static const QTemporaryDir instance;
        return instance;
    }
};
