// SPDX-License-Identifier: MIT
// Finds what the user names on the command line: an identifier, a name, or an unambiguous start of one.
#pragma once

#include "displays/DisplayInfo.h"
#include "displays/ScreenSource.h"
#include "presets/BrightnessPreset.h"

#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

struct Candidate {
    std::string id;
    std::string name;
};

/// The position of the one that `text` names. An exact match goes before a start, upper and lower case count
/// only where they decide. The error says, in a whole sentence, that there is none of this `kind` or that there
/// are several.
tl::expected<std::size_t, std::string> chooseByName(const std::vector<Candidate>& candidates,
                                                    const std::string& text, const std::string& kind);

/// Names all displays.
constexpr char allDisplays[] = "all";

/// The display that `text` names, or all of them for `allDisplays`.
tl::expected<std::vector<DisplayInfo>, std::string> chooseDisplays(std::vector<DisplayInfo> displays,
                                                                   const std::string& text);

/// The preset that `text` names.
tl::expected<BrightnessPreset, std::string> choosePreset(const std::vector<BrightnessPreset>& presets,
                                                         const std::string& text);

} // namespace lumenvale
