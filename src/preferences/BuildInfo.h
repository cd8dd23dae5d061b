// SPDX-License-Identifier: MIT
// Which build of the program this is.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace lumenvale {

/// What a program's bundle says of itself; each part may be missing.
struct BuildResources {
    std::optional<std::string> version;  ///< for example "1.0"
    std::optional<std::string> number;   ///< for example "1"
    std::optional<std::string> metadata; ///< contents of BuildMetadata.json: an object with "builtAt" in ISO 8601
};

struct BuildInfo {
    using Time = std::chrono::system_clock::time_point;

    std::string version = "Unknown";
    std::string number = "Unknown";
    std::optional<Time> builtAt;
};

/// `parseTime` reads an ISO 8601 date and time with a zone ("2025-01-31T18:04:05Z"), and gives none for other
/// text.
BuildInfo readBuildInfo(const BuildResources& resources,
                        const std::function<std::optional<BuildInfo::Time>(const std::string&)>& parseTime);

/// "Built " and the moment in the user's form (made by `format`), for builds of the past week only.
std::optional<std::string> buildLabel(const BuildInfo& info, BuildInfo::Time now,
                                      const std::function<std::string(BuildInfo::Time)>& format);

} // namespace lumenvale
