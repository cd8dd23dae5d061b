// SPDX-License-Identifier: MIT
// Reads the kernel's records under /sys. Nothing is remembered between calls, so any thread may ask; whatever
// is missing or unreadable is simply absent.
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumenvale {

/// Where the system's trees stand; tests put their own there.
struct SystemPaths {
    std::filesystem::path sysfs = "/sys";
    std::filesystem::path devices = "/dev";
    std::filesystem::path processes = "/proc";
};

/// A text attribute without the white space around it.
std::optional<std::string> readAttribute(const std::filesystem::path& file);

/// A number attribute, decimal; none when it is anything else.
std::optional<std::int64_t> readNumber(const std::filesystem::path& file);

/// Writes a number attribute. Returns 0 or the system's error number.
int writeNumber(const std::filesystem::path& file, std::int64_t number);

/// The first bytes of a binary attribute, at most `limit`.
std::vector<std::uint8_t> readBytes(const std::filesystem::path& file, std::size_t limit);

/// The names in a directory, numbers within them in numeric order.
std::vector<std::string> entryNames(const std::filesystem::path& directory);

/// The path with all links followed; empty when it does not exist.
std::filesystem::path resolved(const std::filesystem::path& path);

/// What a link leads to, which may be a link itself; empty when it is none. Cheaper than `resolved`.
std::filesystem::path linkTarget(const std::filesystem::path& link);

/// True when `path` is `ancestor` or lies below it. Both resolved; false for empty ones.
bool isWithin(const std::filesystem::path& path, const std::filesystem::path& ancestor);

/// "card2-DP-1" before "card10-DP-1".
bool naturallyLess(std::string_view left, std::string_view right);

/// The decimal number that is the whole of `text`; none otherwise.
std::optional<std::int64_t> parseNumber(std::string_view text);

} // namespace lumenvale
