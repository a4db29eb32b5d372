// SPDX-License-Identifier: MIT
#include "qkeyeventsendmacproxy.h"

#include "keypress.h"

@implementation QKeyEventSendMacProxy

- (void)sendKeyEvent:(int)pos Key:(unsigned char)key IsCmd:(int)isCmd
{
    pressKey(pos, key, isCmd);
}

@end

void sendKeyByProxy(int pos, unsigned char key, int isCmd)
{
    QKeyEventSendMacProxy* proxy = [[QKeyEventSendMacProxy alloc] init];
    [proxy sendKeyEvent:pos Key:key IsCmd:isCmd];
    [proxy release];
}
