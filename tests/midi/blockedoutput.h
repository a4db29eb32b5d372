// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QMetaType>

#include <array>
#include <fcntl.h>
#ifdef Q_OS_MACOS
#include <util.h>
#else
#include <pty.h>
#endif
#include <termios.h>
#include <unistd.h>

// Replaces standard output and standard error by ones that take nothing until resume(), except
// EmptyPipe. Nothing may be reported to QTest meanwhile.
class BlockedOutput
{
public:
    enum Kind { EmptyPipe, FullPipe, PausedTerminal, FullTerminal };

    explicit BlockedOutput(Kind kind)
    {
        std::array<int, 2> ends{};
        (void)(kind <= FullPipe ? pipe(ends.data())
                                : openpty(ends.data(), &ends[1], nullptr, nullptr, nullptr));
        readEnd = ends[0];
        fcntl(readEnd, F_SETFL, O_NONBLOCK);
        if (kind == PausedTerminal) {
            tcflow(ends[1], TCOOFF); // As by Ctrl+S.
        } else if (kind != EmptyPipe) {
            const int flags = fcntl(ends[1], F_GETFL);
            fcntl(ends[1], F_SETFL, flags | O_NONBLOCK);
            while (write(ends[1], "x", 1) == 1) {
            }
            fcntl(ends[1], F_SETFL, flags);
        }
        for (int file : {STDOUT_FILENO, STDERR_FILENO}) {
            saved[std::size_t(file)] = dup(file);
            dup2(ends[1], file);
        }
        close(ends[1]);
    }
    ~BlockedOutput()
    {
        for (int file : {STDOUT_FILENO, STDERR_FILENO}) {
            dup2(saved[std::size_t(file)], file);
            close(saved[std::size_t(file)]);
        }
        close(readEnd);
    }
    BlockedOutput(const BlockedOutput&) = delete;
    BlockedOutput& operator=(const BlockedOutput&) = delete;

    void resume()
    {
        tcflow(STDOUT_FILENO, TCOON);
        read();
    }
    // What has been written since the last call.
    QByteArray read()
    {
        QByteArray text;
        std::array<char, 4096> some{};
        for (ssize_t n = 0; (n = ::read(readEnd, some.data(), some.size())) > 0;) {
            text.append(some.data(), int(n));
        }
        return text;
    }
    static bool isNonBlocking() { return (fcntl(STDOUT_FILENO, F_GETFL) & O_NONBLOCK) != 0; }

private:
    int readEnd = -1;
    std::array<int, 3> saved{};
};

Q_DECLARE_METATYPE(BlockedOutput::Kind)
