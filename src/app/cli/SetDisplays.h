// SPDX-License-Identifier: MIT
// Sets displays and prints what came of each.
#pragma once

#include "app/cli/Verb.h"
#include "displays/DisplayInfo.h"

#include <functional>
#include <vector>

namespace lumenvale {

/// Inspects the displays, sets each in its turn to the level that `levelFor` gives for what was found, and prints
/// the verified brightness or, on standard error, the reason that there is none. Returns the exit status.
Task<int> setDisplays(VerbContext& context, std::vector<DisplayInfo> displays,
                      std::function<double(const DisplayInfo&)> levelFor);

} // namespace lumenvale
