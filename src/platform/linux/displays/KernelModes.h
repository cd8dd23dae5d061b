// SPDX-License-Identifier: MIT
// The modes that the graphics cards are in, as the kernel tells them. Any thread.
#pragma once

#include "platform/linux/displays/ScreenJoin.h"
#include "platform/linux/displays/Sysfs.h"

#include <set>
#include <string>

namespace lumenvale {

/// The mode of each connector that shows a picture, by its display number. Asks `cards` ("card0") alone, and makes
/// none of them probe its connectors. Cards whose file this user may not open are left out.
KernelModes readKernelModes(const SystemPaths& paths, const std::set<std::string>& cards);

} // namespace lumenvale
