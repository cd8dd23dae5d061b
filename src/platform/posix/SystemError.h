// SPDX-License-Identifier: MIT
// The one place where the system's error numbers become words.
#pragma once

#include <string>
#include <system_error>

namespace lumenvale {

/// What the error number says, for the log and for diagnostics: "No such device or address (6)". Any thread.
inline std::string systemErrorText(int number)
{
    return std::generic_category().message(number) + " (" + std::to_string(number) + ")";
}

} // namespace lumenvale
