// SPDX-License-Identifier: MIT
#include "app/cli/Verb.h"
#include "base/Json.h"
#include "presets/PresetStore.h"

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

void printLines(std::ostream& out, const std::vector<BrightnessPreset>& presets, const Words& words)
{
    for (const BrightnessPreset& preset : presets) {
        out << displayName(preset) << "  ";
        if (preset.shortcut)
            out << displayLabel(*preset.shortcut, words) << "  ";
        out << preset.values.size() << (preset.values.size() == 1 ? " display  " : " displays  ")
            << preset.id.toString() << '\n';
    }
}

Task<int> runPresets(VerbContext& context, ArgumentValues values)
{
    const PresetStore store(context.defaults);
    if (values.has(jsonFlag().name))
        co_return printJson(context, store.presets.get());
    printLines(context.out, store.presets.get(), context.words);
    if (store.presets->empty())
        context.err << "There is no preset.\n";
    co_return exitDone;
}

} // namespace

Verb presetsVerb() { return {"presets", "List the presets", {jsonFlag()}, runPresets}; }

} // namespace lumenvale
