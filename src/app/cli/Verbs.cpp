// SPDX-License-Identifier: MIT
#include "app/cli/Verbs.h"

namespace lumenvale {

std::vector<DisplayInfo> connectedDisplays(ScreenSource& screens)
{
    std::vector<DisplayInfo> displays;
    for (const Screen& screen : screens.screens()) {
        if (auto display = makeDisplayInfo(screen))
            displays.push_back(std::move(*display));
    }
    return displays;
}

bool printOutcome(VerbContext& context, const DisplayInfo& display,
                  const tl::expected<double, BrightnessError>& outcome)
{
    if (outcome) {
        context.out << display.name << ": Hardware brightness verified at " << percentageText(display, *outcome)
                    << ".\n";
        return true;
    }
    context.err << display.name << ": " << description(outcome.error()) << '\n';
    if (display.method == ControlMethod::unavailable)
        context.err << display.name << ": " << display.status << '\n';
    return false;
}

} // namespace lumenvale
