// SPDX-License-Identifier: MIT
// What the program can be asked to do from outside, and its form on the way from one copy to another.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace lumenvale {

struct DesktopRequest {
    enum class Action {
        showPanel,
        openSettings,
        applyPreset,
        startQuietly ///< nothing, where a start that asks for nothing may show the panel
    };

    Action action = Action::showPanel;
    std::string preset;          ///< for applyPreset: its identifier; in options a name, too
    std::string activationToken; ///< the desktop's permission to take the focus; may be empty

    bool operator==(const DesktopRequest& other) const = default;
};

/// One line of JSON, without a line end: {"action": "showPanel" | "openSettings" | "applyPreset" | "startQuietly",
/// "preset": text, "activationToken": text}.
std::string encodeRequest(const DesktopRequest& request);

/// Reads a line made by `encodeRequest`; none for anything else.
std::optional<DesktopRequest> decodeRequest(std::string_view line);

} // namespace lumenvale
