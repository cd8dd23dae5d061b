// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/DisplayJson.h"
#include "app/cli/Verb.h"

namespace lumenvale {

namespace {

Task<int> runGet(VerbContext& context, ArgumentValues values)
{
    const std::string wanted = values.text(displayArgument().name);
    const auto chosen = chooseDisplays(connectedDisplays(context.screens), wanted);
    if (!chosen) {
        context.err << chosen.error() << '\n';
        co_return exitUnknown;
    }
    auto inspection = context.hardware.inspect(*chosen);
    const std::vector<DisplayInfo> displays = co_await std::move(inspection);
    int status = exitDone;
    if (values.has(jsonFlag().name))
        context.out << displaysAsJson(displays) << '\n';
    for (const DisplayInfo& display : displays) {
        if (!display.brightness) {
            context.err << display.name << ": " << display.status << '\n';
            status = exitRefused;
        } else if (values.has(jsonFlag().name)) {
            continue; // it is in the list
        } else if (wanted == allDisplays) {
            context.out << display.name << ": " << percentageText(display) << '\n';
        } else {
            context.out << percentageText(display) << '\n'; // nothing but the number, for scripts
        }
    }
    co_return status;
}

} // namespace

Verb getVerb() { return {"get", "Print a display's brightness", {displayArgument(), jsonFlag()}, runGet}; }

} // namespace lumenvale
