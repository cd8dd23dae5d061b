// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/Verbs.h"

namespace lumenvale {

Task<int> runGet(VerbContext& context, GetVerb verb)
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
        if (!display.brightness) {
            context.err << display.name << ": " << display.status << '\n';
            status = exitRefused;
        } else if (verb.display == "all") {
            context.out << display.name << ": " << percentageText(display) << '\n';
        } else {
            context.out << percentageText(display) << '\n'; // nothing but the number, for scripts
        }
    }
    co_return status;
}

} // namespace lumenvale
