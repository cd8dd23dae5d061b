// SPDX-License-Identifier: MIT
// How well a candidate's facts fit what the system says of a display. Pure; any thread.
#pragma once

#include "base/PropertyList.h"
#include "hardware/IOregService.h"

#include <cstdint>
#include <string>
#include <vector>

namespace lumenvale {

/// A fragment that an EDID UUID must hold for a display.
struct KeyLoc {
    std::string key;      ///< four upper-case hexadecimal digits
    std::int64_t loc = 0; ///< the character position where it must stand
};

/// What candidates are compared with, once for each display.
struct MatchFacts {
    std::vector<KeyLoc> fragments;
    std::string location;
    std::string name; ///< in lower case
    std::int64_t serialNumber = 0;
};

/// Reads a display's information dictionary (see DisplaySystem). What is missing there fits no candidate.
MatchFacts matchFacts(const PropertyDictionary& display);

/// 1 for each of at most four EDID fragments, 10 for the location, 1 each for name and serial number: the location
/// outweighs everything else together.
std::int64_t matchScore(const MatchFacts& display, const IOregService& candidate);

} // namespace lumenvale
