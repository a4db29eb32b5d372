// SPDX-License-Identifier: MIT
#pragma once

// The part of macOS's NSObject that the key sender uses; see ApplicationServices.h beside this.
__attribute__((objc_root_class))
@interface NSObject
+ (instancetype)alloc;
- (instancetype)init;
- (void)release;
@end
