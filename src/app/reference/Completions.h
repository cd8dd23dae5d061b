// SPDX-License-Identifier: MIT
// Scripts that complete commands, options, displays and presets in a shell: what the command line describes is put
// into templates, in which it has names between @ signs. Displays and presets are asked of the program when they
// are needed; no display's bus is touched for it.
#pragma once

#include <string>

namespace lumenvale {

std::string bashCompletion(const std::string& scriptTemplate);
std::string zshCompletion(const std::string& scriptTemplate);
std::string fishCompletion(const std::string& scriptTemplate);

} // namespace lumenvale
