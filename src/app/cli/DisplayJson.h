// SPDX-License-Identifier: MIT
// Displays as JSON: objects under the names of the fields of `DisplayInfo`. Names come from monitors: bytes that
// are not UTF-8 become replacement characters.
#pragma once

#include "displays/DisplayInfo.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumenvale {

/// An array with an object for each display, indented, for scripts.
std::string displaysAsJson(const std::vector<DisplayInfo>& displays);

/// One object in one line.
std::string displayAsJson(const DisplayInfo& display);

/// Reads what `displaysAsJson` wrote. Fields that are missing or of another kind keep what they have in a new
/// `DisplayInfo`; none where it is no array of objects.
std::optional<std::vector<DisplayInfo>> displaysFromJson(std::string_view text);

} // namespace lumenvale
