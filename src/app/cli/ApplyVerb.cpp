// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/SetDisplays.h"
#include "app/cli/Verb.h"
#include "presets/PresetStore.h"

#include <algorithm>

namespace lumenvale {

namespace {

constexpr char presetName[] = "PRESET";

/// The displays of `connected` that the preset has a level for.
std::vector<DisplayInfo> present(const BrightnessPreset& preset, std::vector<DisplayInfo> connected)
{
    std::erase_if(connected, [&](const DisplayInfo& each) { return !preset.values.contains(each.id); });
    return connected;
}

void printAbsent(std::ostream& out, const BrightnessPreset& preset, const std::vector<DisplayInfo>& displays)
{
    for (const auto& [id, level] : preset.values) {
        if (std::ranges::find(displays, id, &DisplayInfo::id) != displays.end())
            continue;
        const auto name = preset.displayNames.find(id);
        out << (name == preset.displayNames.end() ? id : name->second) << ": Not connected.\n";
    }
}

Task<int> runApply(VerbContext& context, ArgumentValues values)
{
    const PresetStore store(context.defaults);
    const auto preset = choosePreset(store.presets.get(), values.text(presetName));
    if (!preset) {
        context.err << preset.error() << '\n';
        co_return exitUnknown;
    }
    const std::vector<DisplayInfo> displays = present(*preset, connectedDisplays(context.screens));
    const auto levelFor = [&preset](const DisplayInfo& display) {
        return quantise(display, preset->values.at(display.id));
    };
    auto setting = setDisplays(context, displays, levelFor);
    const int status = co_await std::move(setting);
    printAbsent(context.out, *preset, displays);
    co_return status;
}

} // namespace

Verb applyVerb()
{
    const Argument preset = {.name = presetName,
                             .kind = ValueKind::preset,
                             .help = "An identifier, a name, or an unambiguous start of one"};
    return {"apply", "Set the displays to a preset's levels", {preset}, runApply};
}

} // namespace lumenvale
