// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/SetDisplays.h"
#include "app/cli/Verb.h"

namespace lumenvale {

namespace {

constexpr char levelName[] = "LEVEL";

Task<int> runSet(VerbContext& context, ArgumentValues values)
{
    const auto chosen = chooseDisplays(connectedDisplays(context.screens), values.text(displayArgument().name));
    if (!chosen) {
        context.err << chosen.error() << '\n';
        co_return exitUnknown;
    }
    const LevelArgument level = values.level(levelName);
    const auto levelFor = [level](const DisplayInfo& display) {
        return level.isRelative ? adjusted(display, level.value) : quantise(display, level.value);
    };
    auto setting = setDisplays(context, *chosen, levelFor);
    co_return co_await std::move(setting);
}

} // namespace

Verb setVerb()
{
    const Argument level = {.name = levelName, .kind = ValueKind::level, .help = "42%, 0.42, +5% or -5%"};
    return {"set", "Set a display's brightness and verify it", {displayArgument(), level}, runSet};
}

} // namespace lumenvale
