// SPDX-License-Identifier: MIT
// Finds out why a display cannot be controlled and what its user can do about it.
#pragma once

#include "displays/DisplayInfo.h"

#include <string>
#include <vector>

namespace lumenvale {

/// One thing found, in whole sentences for the user.
struct Finding {
    enum class Kind { good, note, problem };

    Kind kind = Kind::note;
    std::string displayID; ///< `DisplayInfo::id` of the display it is about; empty: the whole system
    std::string text;      ///< what was found, or is missing
    std::string remedy;    ///< what would help, commands included, lines separated by '\n'; may be empty
    bool isScript = false; ///< the remedy is lines for a shell

    bool operator==(const Finding& other) const = default;
};

class Diagnostics {
public:
    virtual ~Diagnostics() = default;

    /// Looks at the system's own records (device files, permissions, drivers), never at the displays' buses.
    /// `displays` are inspected records. First what concerns the system, then display by display. Main thread.
    virtual std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) = 0;

    /// What kept the display from being set just now: cause and remedy in one line. Empty where no more is known
    /// than the error says.
    virtual std::string obstacle(const DisplayInfo&) { return {}; }
};

/// Whether to ask for an obstacle after this error. The texts of the others say all that is known: of a display
/// that is another one now, and of one that took the value and gave it up again.
constexpr bool mayHaveObstacle(BrightnessError error)
{
    return error == BrightnessError::writeFailed || error == BrightnessError::readFailed;
}

} // namespace lumenvale
