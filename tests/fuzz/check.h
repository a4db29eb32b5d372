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

    // Saves what was read over the input, and reads that. From then on, saving it to a new file and
    // reading that changes nothing.
    template <typename Read, typename Save>
    static void checkSaving(const Read& read, const Save& save)
    {
        auto data = read(path());
        save(path(), data);
        data = read(path());
        const QByteArray saved = savedBytes(save, data);
        data = read(freshPath());
        check(savedBytes(save, data) == saved, "what was saved reads back");
    }

private:
    template <typename Save, typename Data>
    static QByteArray savedBytes(const Save& save, Data& data)
    {
        QFile::remove(freshPath());
        save(freshPath(), data);
        QFile file(freshPath());
        check(file.open(QIODevice::ReadOnly), "what was saved is there");
        return file.readAll();
    }

    static QString freshPath() { return dir().filePath(QStringLiteral("fresh.ini")); }

    static const QTemporaryDir& dir()
    {
        static const QTemporaryDir instance;
        return instance;
    }
};
