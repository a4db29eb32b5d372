// SPDX-License-Identifier: MIT
#include "miditrace.h"

#include <QDebug>

#include <algorithm>
#include <iostream>
#include <mutex>
#include <sstream>

#include <poll.h>
#include <unistd.h>

namespace {

constexpr int kNoteOnOfChannel0 = 144;
// A pipe or terminal that can be written to takes at least that much without waiting.
constexpr std::size_t kAtOnceBytes = 256;

// Setting O_NONBLOCK instead would change the file of other processes too, such as a shell's.
bool canWrite(int file)
{
    pollfd state{file, POLLOUT, 0};
    return poll(&state, 1, 0) == 1 && state.revents == POLLOUT;
}

void writeDebugLine(const char* what, int number)
{
    if (canWrite(STDERR_FILENO)) {
        qDebug() << what << number;
    }
}

void writeLine(const std::string& line)
{
    std::cout.clear(); // An earlier trace may have failed.
    for (std::size_t done = 0; done < line.size() && canWrite(STDOUT_FILENO);) {
        const std::size_t bytes = std::min(kAtOnceBytes, line.size() - done);
        std::cout.write(line.data() + done, static_cast<std::streamsize>(bytes)).flush();
        done += bytes;
    }
}

// So that the room that one thread has found is not used by another.
std::mutex& traceLock()
{
    static std::mutex lock;
    return lock;
}

} // namespace

void traceReceived(double stampSeconds, const std::vector<unsigned char>& bytes)
{
    const std::lock_guard<std::mutex> lock(traceLock());
    writeDebugLine("channel", static_cast<int>(bytes.front()) - kNoteOnOfChannel0);
    std::ostringstream line;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        line << "Byte " << i << " = " << static_cast<int>(bytes[i]) << ", ";
    }
    line << "stamp = " << stampSeconds << '\n';
    writeLine(line.str());
}

void traceSent(const std::vector<unsigned char>& bytes)
{
    const std::lock_guard<std::mutex> lock(traceLock());
    writeDebugLine("send message", bytes.front());
}
