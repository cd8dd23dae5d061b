// SPDX-License-Identifier: MIT
// Between our text and the system's objects. For Objective-C++ files only; compiled with automatic reference
// counting.
#pragma once

#import <Foundation/Foundation.h>
#include <string>

namespace lumenvale {

/// Empty for what is not UTF-8: most methods do not take nil.
inline NSString* toNSString(const std::string& text)
{
    NSString* const converted = [NSString stringWithUTF8String:text.c_str()];
    return converted ? converted : @"";
}

/// Empty for nil.
inline std::string toStdString(NSString* text)
{
    const char* bytes = text.UTF8String;
    return bytes ? bytes : "";
}

} // namespace lumenvale
