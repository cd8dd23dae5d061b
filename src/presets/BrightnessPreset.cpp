// SPDX-License-Identifier: MIT
#include "presets/BrightnessPreset.h"

#include <algorithm>
#include <string_view>

namespace lumenvale {

namespace {

// White space in UTF-8: the separators of Unicode (general categories Zs, Zl, Zp) and the controls that end or
// feed lines.
constexpr std::string_view whiteSpace[] = {
    " ",
    "\t",
    "\n",
    "\v",
    "\f",
    "\r",
    "\xC2\x85",     // next line
    "\xC2\xA0",     // no-break space
    "\xE1\x9A\x80", // ogham space
    "\xE2\x80\x80", // U+2000 to U+200A: spaces of various widths
    "\xE2\x80\x81",
    "\xE2\x80\x82",
    "\xE2\x80\x83",
    "\xE2\x80\x84",
    "\xE2\x80\x85",
    "\xE2\x80\x86",
    "\xE2\x80\x87",
    "\xE2\x80\x88",
    "\xE2\x80\x89",
    "\xE2\x80\x8A",
    "\xE2\x80\xA8", // line separator
    "\xE2\x80\xA9", // paragraph separator
    "\xE2\x80\xAF", // narrow no-break space
    "\xE2\x81\x9F", // medium mathematical space
    "\xE3\x80\x80", // ideographic space
};

bool isBlank(std::string_view text)
{
    while (!text.empty()) {
        const auto blank = std::ranges::find_if(whiteSpace, [&](auto each) { return text.starts_with(each); });
        if (blank == std::end(whiteSpace))
            return false;
        text.remove_prefix(blank->size());
    }
    return true;
}

constexpr std::int64_t firstDefaultFunctionKey = 16;
constexpr std::int64_t lastDefaultFunctionKey = 20;

} // namespace

std::string displayName(const BrightnessPreset& preset)
{
    return isBlank(preset.name) ? "Untitled preset" : preset.name;
}

std::optional<PresetShortcut> defaultShortcut(const std::vector<BrightnessPreset>& presets)
{
    for (std::int64_t number = firstDefaultFunctionKey; number <= lastDefaultFunctionKey; ++number) {
        const bool isTaken = std::ranges::any_of(presets, [number](const BrightnessPreset& each) {
            return each.shortcut && each.shortcut->functionKey == number;
        });
        if (!isTaken) {
            PresetShortcut shortcut;
            shortcut.functionKey = number;
            return shortcut;
        }
    }
    return std::nullopt;
}

} // namespace lumenvale
