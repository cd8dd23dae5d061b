// SPDX-License-Identifier: MIT
// A named set of brightness levels, and its stored form.
#pragma once

#include "base/PropertyList.h"
#include "base/Uuid.h"
#include "presets/PresetShortcut.h"

#include <map>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

struct BrightnessPreset {
    Uuid id;
    std::string name; ///< as typed; may be blank
    std::optional<PresetShortcut> shortcut;
    std::map<std::string, double> values;            ///< level 0.0 to 1.0 by display identifier
    std::map<std::string, std::string> displayNames; ///< by display identifier, from when the level was captured

    bool operator==(const BrightnessPreset& other) const = default;
};

/// The name, or "Untitled preset" when it holds nothing but white space.
std::string displayName(const BrightnessPreset& preset);

/// The first of F16 to F20 that none of `presets` uses, without modifiers; none when all are taken.
std::optional<PresetShortcut> defaultShortcut(const std::vector<BrightnessPreset>& presets);

/// The presets as one JSON array in UTF-8, or why they cannot be encoded (a level that is not finite). Bytes of a
/// text that are not UTF-8 become U+FFFD.
///
///     [{"id": "37D8832A-…", "name": "Evening",
///       "shortcut": {"functionKey": 0, "command": true, "option": false, "control": false, "shift": true,
///                    "recordedKeyCode": 40, "recordedKeyLabel": "K"},
///       "values": {"display-2": 0.43}, "displayNames": {"display-2": "Studio 27"}}]
///
/// "shortcut", "recordedKeyCode" and "recordedKeyLabel" are left out when absent.
tl::expected<PropertyData, std::string> encodePresets(const std::vector<BrightnessPreset>& presets);

/// Reads what `encodePresets` wrote. Strict: one missing or mistyped required key fails the whole document;
/// unknown keys are ignored, and so is null for a key that may be absent. A level that is not a number is read
/// as NaN and left to `PresetStore` to drop. The error says what was expected and where.
tl::expected<std::vector<BrightnessPreset>, std::string> decodePresets(const PropertyData& data);

} // namespace lumenvale
