// SPDX-License-Identifier: MIT
#include "keypress.h"

#include "macevents.h"
#include "qkeyeventsendmac.h"

#include <memory>
#include <type_traits>

namespace {

constexpr unsigned int kKeyHoldUs = 30000;

struct Release
{
    void operator()(CGEventRef event) const { CFRelease(event); }
};
using Event = std::unique_ptr<std::remove_pointer_t<CGEventRef>, Release>;

Event postEvent(ProcessSerialNumber process, unsigned char key, bool isDown, int isCmd)
{
    Event event(CGEventCreateKeyboardEvent(nullptr, key, isDown));
    if (event && isCmd == 1) {
        CGEventSetFlags(event.get(), kCGEventFlagMaskCommand);
    }
    if (event) {
        CGEventPostToPSN(&process, event.get());
    }
    return event;
}

} // namespace

void pressKey(int pos, unsigned char key, int isCmd)
{
    const ProcessSerialNumber process = QKeyEventSendMac::getProcess(pos);
    const Event down = postEvent(process, key, true, isCmd);
    platformPause(kKeyHoldUs);
    const Event up = postEvent(process, key, false, isCmd);
}
