// SPDX-License-Identifier: MIT
// Small text files, as the desktop's folders are full of.
#pragma once

#include <optional>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// The whole file; none when it is missing or cannot be read.
std::optional<std::string> readTextFile(const std::string& path);

/// Replaces the file in one step and makes missing folders. The error is the system's description.
tl::expected<void, std::string> writeTextFile(const std::string& path, const std::string& text);

} // namespace lumenvale
