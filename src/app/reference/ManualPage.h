// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace lumenvale {

/// The manual page in man(7)'s language.
std::string manualPage();

} // namespace lumenvale
