// SPDX-License-Identifier: MIT
#include "writeatonce.h"

#include <QByteArray>
#include <QString>

#include <string>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Opens a pipe or terminal once more, since O_NONBLOCK on `file` would hold for other processes
// too, such as a shell. -1 where that is not possible, or not needed.
int openWithoutWaiting([[maybe_unused]] int file)
{
#ifdef __linux__
    struct stat status = {};
    if (::fstat(file, &status) == 0 && (S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))) {
        return ::open(("/proc/self/fd/" + std::to_string(file)).c_str(),
                      O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    }
#endif
    return -1;
}

bool canWrite(int file)
{
    pollfd state{file, POLLOUT, 0};
    return ::poll(&state, 1, 0) == 1 && state.revents == POLLOUT;
}

} // namespace

void writeAtOnce(int file, const char* text, std::size_t size)
{
    const int own = openWithoutWaiting(file);
    if (own != -1) {
        [[maybe_unused]] const auto written = ::write(own, text, size);
        ::close(own);
    } else if (canWrite(file)) {
        [[maybe_unused]] const auto written = ::write(file, text, size);
    }
}

void writeMessageAtOnce(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    const QByteArray line = qFormatLogMessage(type, context, text).toLocal8Bit() + '\n';
    writeAtOnce(STDERR_FILENO, line.constData(), static_cast<std::size_t>(line.size()));
}
