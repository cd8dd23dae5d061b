// SPDX-License-Identifier: MIT
#include "app/cli/SetDisplays.h"

namespace lumenvale {

namespace {

/// True when the display was set.
bool printOutcome(VerbContext& context, const DisplayInfo& display,
                  const tl::expected<double, BrightnessError>& outcome)
{
    if (outcome) {
        context.out << display.name << ": Hardware brightness verified at " << percentageText(display, *outcome)
                    << ".\n";
        return true;
    }
    std::string reason;
    if (display.method == ControlMethod::unavailable)
        reason = display.status;
    else if (mayHaveObstacle(outcome.error()))
        reason = context.diagnostics.obstacle(display);
    if (reason.empty())
        reason = description(outcome.error());
    context.err << display.name << ": " << reason << '\n';
    return false;
}

} // namespace

Task<int> setDisplays(VerbContext& context, std::vector<DisplayInfo> displays,
                      std::function<double(const DisplayInfo&)> levelFor)
{
    auto change = context.hardware.changeBrightness(std::move(displays), std::move(levelFor));
    const std::vector<BrightnessChange> changes = co_await std::move(change);
    int status = exitDone;
    for (const BrightnessChange& each : changes) {
        const bool isSet = printOutcome(context, each.display, each.outcome);
        if (!isSet)
            status = exitRefused;
    }
    co_return status;
}

} // namespace lumenvale
