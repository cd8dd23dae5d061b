// SPDX-License-Identifier: MIT
// What CoreGraphics and ColorSync know of a display by its number. Any thread.
#pragma once

#include "displays/ScreenSource.h"

#include <cstdint>
#include <optional>
#include <string>

namespace lumenvale {

/// The display's UUID in canonical form, or none.
std::optional<std::string> displayUuid(std::uint32_t displayID);

/// All of a screen but its name and frame, which only its window system object has.
Screen displayFacts(std::uint32_t displayID);

} // namespace lumenvale
