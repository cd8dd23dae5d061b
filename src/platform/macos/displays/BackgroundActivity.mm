// SPDX-License-Identifier: MIT
#include "platform/macos/displays/BackgroundActivity.h"

#import <Foundation/Foundation.h>

namespace lumenvale {

struct BackgroundActivity::Token {
    id<NSObject> activity;
};

BackgroundActivity::BackgroundActivity() : token(std::make_unique<Token>())
{
    token->activity =
        [NSProcessInfo.processInfo beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                                                     reason:@"Follows the brightness of the displays"];
}

BackgroundActivity::~BackgroundActivity() { [NSProcessInfo.processInfo endActivity:token->activity]; }

} // namespace lumenvale
