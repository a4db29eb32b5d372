// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cstddef>

// Writes what a file descriptor takes without waiting and drops the rest, so that a paused terminal
// or a pipe that nobody reads holds nothing up. Any thread.
void writeAtOnce(int file, const char* text, std::size_t size);

// A Qt message handler that writes to standard error in this way, in Qt's message pattern.
void writeMessageAtOnce(QtMsgType type, const QMessageLogContext& context, const QString& text);
