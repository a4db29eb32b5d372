// SPDX-License-Identifier: MIT
#include "qkeyeventsendmac.h"

#include <Foundation/Foundation.h>

// What must be Objective-C++ of sending one key.
@interface QKeyEventSendMacProxy : NSObject
- (void)sendKeyEvent:(int)pos Key:(unsigned char)key IsCmd:(int)isCmd;
@end

@implementation QKeyEventSendMacProxy
- (void)sendKeyEvent:(int)pos Key:(unsigned char)key IsCmd:(int)isCmd
{
    QKeyEventSendMac::pressKey(pos, key, isCmd);
}
@end

void sendKeyByProxy(int pos, unsigned char key, int isCmd)
{
    QKeyEventSendMacProxy* proxy = [[QKeyEventSendMacProxy alloc] init];
    [proxy sendKeyEvent:pos Key:key IsCmd:isCmd];
    [proxy release];
}
