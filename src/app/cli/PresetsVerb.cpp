// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/Verbs.h"
#include "base/Json.h"
#include "presets/PresetStore.h"

#include <algorithm>

namespace lumenvale {

namespace {

int printJson(VerbContext& context, const std::vector<BrightnessPreset>& presets)
{
    const auto encoded = encodePresets(presets);
    if (!encoded) {
        context.err << encoded.error() << '\n';
        return exitMisused;
    }
    context.out << writeJson(*parseOrderedJson(std::string(encoded->begin(), encoded->end())), 2) << '\n';
    return exitDone;
}

void printLines(std::ostream& out, const std::vector<BrightnessPreset>& presets)
{
    for (const BrightnessPreset& preset : presets) {
        out << displayName(preset) << "  ";
        if (preset.shortcut)
            out << displayLabel(*preset.shortcut) << "  ";
        out << preset.values.size() << (preset.values.size() == 1 ? " display  " : " displays  ")
            << preset.id.toString() << '\n';
    }
}

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

} // namespace

Task<int> runPresets(VerbContext& context, PresetsVerb verb)
{
    const PresetStore store(context.defaults);
    if (verb.asJson)
        co_return printJson(context, store.presets.get());
    printLines(context.out, store.presets.get());
    if (store.presets->empty())
        context.err << "There is no preset.\n";
    co_return exitDone;
}

Task<int> runApply(VerbContext& context, ApplyVerb verb)
{
    const PresetStore store(context.defaults);
    std::vector<Candidate> candidates;
    for (const BrightnessPreset& each : store.presets.get())
        candidates.push_back({each.id.toString(), displayName(each)});
    const auto position = chooseByName(candidates, verb.preset, "preset");
    if (!position) {
        context.err << position.error() << '\n';
        co_return exitUnknown;
    }
    const BrightnessPreset preset = store.presets.get()[*position];

    auto inspection = context.hardware.inspect(present(preset, connectedDisplays(context.screens)));
    const std::vector<DisplayInfo> displays = co_await std::move(inspection);
    int status = exitDone;
    for (const DisplayInfo& display : displays) {
        auto write = context.hardware.setBrightness(quantise(display, preset.values.at(display.id)), display.id);
        const auto outcome = co_await std::move(write);
        const bool isSet = printOutcome(context, display, outcome);
        if (!isSet)
            status = exitRefused;
    }
    printAbsent(context.out, preset, displays);
    co_return status;
}

} // namespace lumenvale
