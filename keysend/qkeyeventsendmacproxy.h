// SPDX-License-Identifier: MIT
#pragma once

// The platform's side of sending one key. On macOS it is an Objective-C object, elsewhere a C++
// class of the same name and method; both only call pressKey() of keypress.h.
#ifdef __OBJC__
#include <Foundation/Foundation.h>

@interface QKeyEventSendMacProxy : NSObject
- (void)sendKeyEvent:(int)pos Key:(unsigned char)key IsCmd:(int)isCmd;
@end
#endif

// Makes a QKeyEventSendMacProxy, has it send the key to the slot of QKeyEventSendMac's table, and
// gives it up again. For QKeyEventSendMac, which must not know which of the two languages it is.
void sendKeyByProxy(int pos, unsigned char key, int isCmd);
