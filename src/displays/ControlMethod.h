// SPDX-License-Identifier: MIT
// How a display's brightness is controlled.
#pragma once

#include <optional>
#include <string_view>

namespace lumenvale {

enum class ControlMethod { apple, ddc, unavailable };

/// The text shown to the user; also the stored form.
std::string_view rawValue(ControlMethod method);

/// Accepts exactly the three texts of `rawValue`.
std::optional<ControlMethod> controlMethodFromRawValue(std::string_view text);

} // namespace lumenvale
