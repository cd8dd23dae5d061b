// SPDX-License-Identifier: MIT
#pragma once

#include "displays/DisplayInfo.h"

#include <string>
#include <vector>

namespace lumenvale {

/// An array with an object for each display, under the names of the fields of `DisplayInfo`, indented, for
/// scripts. Names come from monitors: bytes that are not UTF-8 become replacement characters.
std::string displaysAsJson(const std::vector<DisplayInfo>& displays);

} // namespace lumenvale
