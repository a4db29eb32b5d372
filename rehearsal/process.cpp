// SPDX-License-Identifier: MIT
#include "process.h"

#include <QFile>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

constexpr int kLineLimit = 1000; // Bytes; far longer than any command.

} // namespace

void prepareStandardStreams()
{
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0) {
        ::close(descriptor);
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGTTIN, SIG_IGN);
}

bool takeProcessName(const QByteArray& name)
{
    if (::prctl(PR_SET_NAME, name.constData()) != 0) {
        return false;
    }
    QFile comm(QStringLiteral("/proc/self/comm"));
    return comm.open(QIODevice::ReadOnly) && comm.readAll() == name + '\n';
}

LineReader::LineReader(int readFrom)
    : descriptor(readFrom), notifier(readFrom, QSocketNotifier::Read)
{
    connect(&notifier, &QSocketNotifier::activated, this, &LineReader::readSome);
}

void LineReader::readSome()
{
    std::array<char, 4096> chunk{};
    const auto count = ::read(descriptor, chunk.data(), chunk.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    if (count <= 0) {
        notifier.setEnabled(false);
        pending.append('\n'); // The last line may lack its end.
    } else {
        pending.append(chunk.data(), static_cast<int>(count));
    }
    for (auto end = pending.indexOf('\n'); end >= 0; end = pending.indexOf('\n')) {
        const QString line = QString::fromUtf8(pending.left(end)).trimmed();
        pending.remove(0, end + 1);
        if (!line.isEmpty()) {
            emit lineRead(line);
        }
    }
    if (pending.size() > kLineLimit) {
        pending.clear();
    }
}
