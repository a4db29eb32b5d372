// SPDX-License-Identifier: MIT
#include "qkeyeventsend.h"

#include "qkeyeventsendmac.h"

#include "macevents.h"
#include "mackeys.h"

namespace {

constexpr unsigned int kAfterKeyUs = 100000; // So that the DAW can follow.

} // namespace

QKeyEventSend::QKeyEventSend() : backEnd(std::make_unique<QKeyEventSendMac>())
{
}

QKeyEventSend::~QKeyEventSend() = default;

void QKeyEventSend::setProcNameList()
{
    procNameList.clear();
    backEnd->setProcessName();
    for (int i = 0; i < backEnd->getProcNameCount(); ++i) {
        procNameList.append(QString::fromLatin1(backEnd->getProcName(i)));
    }
}

int QKeyEventSend::getPosFromProcName(const QString& name) const
{
    return static_cast<int>(procNameList.indexOf(name));
}

bool QKeyEventSend::canType()
{
    return mayPostEvents();
}

void QKeyEventSend::sendKeyEvent(int pos, unsigned char key, bool isCmd, bool isVirtualKey)
{
    const bool isDigit = !isVirtualKey && key >= '0' && key <= '9';
    backEnd->sendKeyEvent(pos, isDigit ? keypadKey(key - '0') : key, isCmd ? 1 : 0);
    pause(kAfterKeyUs);
}

void QKeyEventSend::pause(unsigned int microseconds)
{
    platformPause(microseconds);
}
