// SPDX-License-Identifier: MIT
// The one place where the system's error numbers become words.
#pragma once

#include <string>

namespace lumenvale {

/// What the error number says, for the log and for diagnostics: "No such device or address (6)". Any thread.
std::string systemErrorText(int number);

} // namespace lumenvale
