// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/Verbs.h"

namespace lumenvale {

namespace {

double targetLevel(const DisplayInfo& display, const LevelArgument& level)
{
    return level.isRelative ? adjusted(display, level.value) : quantise(display, level.value);
}

} // namespace

Task<int> runSet(VerbContext& context, SetVerb verb)
{
    const auto chosen = chooseDisplays(connectedDisplays(context.screens), verb.display);
    if (!chosen) {
        context.err << chosen.error() << '\n';
        co_return exitUnknown;
    }
    auto inspection = context.hardware.inspect(*chosen);
    const std::vector<DisplayInfo> displays = co_await std::move(inspection);
    int status = exitDone;
    for (const DisplayInfo& display : displays) {
        auto write = context.hardware.setBrightness(targetLevel(display, verb.level), display.id);
        const auto outcome = co_await std::move(write);
        const bool isSet = printOutcome(context, display, outcome);
        if (!isSet)
            status = exitRefused;
    }
    co_return status;
}

} // namespace lumenvale
