// SPDX-License-Identifier: MIT
// A brightness as it is written on the command line. Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumenvale {

struct LevelArgument {
    bool isRelative = false;
    double value = 0.0; ///< 0.0 to 1.0; from -1.0 to 1.0 when relative

    bool operator==(const LevelArgument& other) const = default;
};

/// Reads "42%", "0.42" (0 to 1), "+5%" or "-5%": decimal digits with at most one point, whatever the locale.
/// None for anything else, and for what leaves the scale.
std::optional<LevelArgument> parseLevel(std::string_view text);

/// What to say of a text that is none: whole sentences for the user.
std::string notALevel(const std::string& text);

} // namespace lumenvale
