// SPDX-License-Identifier: MIT
// Where the program presents itself.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace lumenvale {

enum class AppPresentation { menuBar, dock, both };

inline constexpr std::array allPresentations = {AppPresentation::menuBar, AppPresentation::dock,
                                                AppPresentation::both};

/// The stored form: "menuBar", "dock", "both".
std::string_view rawValue(AppPresentation presentation);

/// Accepts exactly the texts of `rawValue`.
std::optional<AppPresentation> appPresentationFromRawValue(std::string_view text);

} // namespace lumenvale
