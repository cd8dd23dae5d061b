// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace lumenvale {

/// Runs the program file at `path` in the place of this one: same process, environment and standard streams. The
/// first of the `arguments` is the program's name. Returns only when that failed, with the system's description.
std::string replaceProcess(const std::string& path, std::vector<std::string> arguments);

} // namespace lumenvale
