// SPDX-License-Identifier: MIT
// What the kernel tells of other programs, by /proc: who holds a file, who has it open. Any thread.
#pragma once

#include "platform/linux/displays/Sysfs.h"

#include <optional>
#include <string>

namespace lumenvale {

/// The other program that holds an advisory lock on `file`: "colord (process 812)"; none when none does.
std::optional<std::string> lockHolder(const SystemPaths& paths, const std::filesystem::path& file);

/// Another program that has `file` open, likewise. Programs of other users do not show it, except to root.
std::optional<std::string> openHolder(const SystemPaths& paths, const std::filesystem::path& file);

} // namespace lumenvale
