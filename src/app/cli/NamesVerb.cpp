// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/Verb.h"
#include "presets/PresetStore.h"

namespace lumenvale {

namespace {

constexpr char presetsFlag[] = "--presets";

Task<int> runNames(VerbContext& context, ArgumentValues values)
{
    if (values.has(presetsFlag)) {
        const PresetStore store(context.defaults);
        for (const BrightnessPreset& preset : store.presets.get())
            context.out << displayName(preset) << '\n';
    } else {
        for (const DisplayInfo& display : connectedDisplays(context.screens))
            context.out << display.name << '\n';
    }
    co_return exitDone;
}

} // namespace

/// For shells that complete a name while it is typed: no display's bus is touched.
Verb namesVerb()
{
    const Argument presets = {.name = presetsFlag, .kind = ValueKind::flag, .help = "Print the presets' names"};
    return {"names", "Print the names of the connected displays, at once", {presets}, runNames};
}

} // namespace lumenvale
