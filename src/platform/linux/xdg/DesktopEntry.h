// SPDX-License-Identifier: MIT
// Desktop entry files (Desktop Entry Specification 1.5): reading, changing and writing them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <utility>
#include <vector>

namespace lumenvale {

/// Keeps keys and groups in order and drops comments. Lines that are neither are ignored.
class DesktopEntry {
public:
    struct Group {
        std::string name;
        std::vector<std::pair<std::string, std::string>> keys; ///< values as they stand in the file
    };

    static constexpr char mainGroup[] = "Desktop Entry";

    static DesktopEntry parse(std::string_view text);
    std::string toString() const;

    /// The value as it stands in the file; none when group or key is missing.
    std::optional<std::string> value(std::string_view group, std::string_view key) const;
    /// True for "true" (and the "1" of old files); false for all else.
    bool flag(std::string_view group, std::string_view key) const;
    /// Adds or replaces; makes the group when it is missing.
    void set(const std::string& group, const std::string& key, std::string value);
    void removeGroups(std::string_view prefix);

private:
    const Group* find(std::string_view name) const;

    std::vector<Group> groups;
};

/// Text as the value of a string key: backslashes, line ends and leading blanks escaped.
std::string escapeEntryText(std::string_view text);

/// A command as the value of an Exec key: each argument quoted, field codes switched off.
std::string execLine(const std::vector<std::string>& command);

/// The whole file; none when it is missing or cannot be read.
std::optional<std::string> readTextFile(const std::string& path);

/// Replaces the file in one step and makes missing folders. The error is the system's description.
tl::expected<void, std::string> writeTextFile(const std::string& path, const std::string& text);

} // namespace lumenvale
