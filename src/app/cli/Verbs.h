// SPDX-License-Identifier: MIT
// The commands of the command line, over the same interfaces as the desktop program. Each is a task on the main
// thread that prints to the given streams and returns the exit status. The context must outlive it.
#pragma once

#include "app/cli/CommandLine.h"
#include "base/Task.h"
#include "base/UserDefaults.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayHardwareControlling.h"
#include "displays/ScreenSource.h"

#include <ostream>

namespace lumenvale {

constexpr int exitDone = 0;
constexpr int exitRefused = 1; ///< by the hardware
constexpr int exitMisused = 2;
constexpr int exitUnknown = 3; ///< no such display or preset

struct VerbContext {
    ScreenSource& screens;
    DisplayHardwareControlling& hardware;
    Diagnostics& diagnostics;
    UserDefaults& defaults;
    std::ostream& out;
    std::ostream& err;
    const int& reports; ///< how many mistakes in the user's files were reported so far
};

Task<int> runList(VerbContext& context, ListVerb verb);
Task<int> runGet(VerbContext& context, GetVerb verb);
Task<int> runSet(VerbContext& context, SetVerb verb);
Task<int> runPresets(VerbContext& context, PresetsVerb verb);
Task<int> runApply(VerbContext& context, ApplyVerb verb);
Task<int> runDoctor(VerbContext& context);

/// The connected displays in the system's order, not yet inspected.
std::vector<DisplayInfo> connectedDisplays(ScreenSource& screens);

/// Prints what came of setting a display: its verified brightness, or on standard error why not. True when set.
bool printOutcome(VerbContext& context, const DisplayInfo& display,
                  const tl::expected<double, BrightnessError>& outcome);

} // namespace lumenvale
