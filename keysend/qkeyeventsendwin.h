// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

// The place of a back end for Windows. It finds no application and types nothing, and
// QKeyEventSend does not use it.
class QKeyEventSendWin
{
public:
    void init() {}
    void sendKeyEvent(int, unsigned char, bool) {}

private:
    QStringList procNameList;
};
