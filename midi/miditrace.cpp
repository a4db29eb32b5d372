// SPDX-License-Identifier: MIT
#include "miditrace.h"

#include "writeatonce.h"

#include <QDebug>

#include <sstream>

#include <unistd.h>

namespace {

constexpr int kNoteOnOfChannel0 = 144;

} // namespace

void traceReceived(double stampSeconds, const std::vector<unsigned char>& bytes)
{
    qDebug() << "channel" << static_cast<int>(bytes.front()) - kNoteOnOfChannel0;
    std::ostringstream line;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        line << "Byte " << i << " = " << static_cast<int>(bytes[i]) << ", ";
    }
    line << "stamp = " << stampSeconds << '\n';
    writeAtOnce(STDOUT_FILENO, line.str().data(), line.str().size());
}

void traceSent(const std::vector<unsigned char>& bytes)
{
    qDebug() << "send message" << bytes.front();
}
