// SPDX-License-Identifier: MIT
// Who keeps a device file locked, by the kernel's list of locks. Any thread.
#pragma once

#include "platform/linux/displays/Sysfs.h"

#include <optional>
#include <string>

namespace lumenvale {

/// The name of a program that holds an advisory lock on `file`; none when nobody does. A holder that does not show
/// its name is "another program".
std::optional<std::string> lockHolder(const SystemPaths& paths, const std::filesystem::path& file);

} // namespace lumenvale
