// SPDX-License-Identifier: MIT
// A command of the command line: what help, manual page and shell completions say of it, and what it does. To add
// one, write a file that defines a function returning its Verb, and add the function's name to the list in
// Verbs.cpp.
#pragma once

#include "app/cli/Argument.h"
#include "base/Clock.h"
#include "base/Task.h"
#include "base/UserDefaults.h"
#include "base/Words.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayHardwareControlling.h"
#include "displays/RunningProgram.h"
#include "displays/ScreenSource.h"
#include "displays/SystemEvents.h"

#include <ostream>
#include <string>
#include <vector>

namespace lumenvale {

// The program's exit statuses.
constexpr int exitDone = 0;
constexpr int exitRefused = 1; ///< by the hardware; or `doctor` found a problem
constexpr int exitMisused = 2; ///< wrong arguments, or a mistake in a file that was read
constexpr int exitUnknown = 3; ///< no such display or preset

/// That of a verb which ended so, after so many mistakes in the user's files were reported.
constexpr int exitStatus(int ofVerb, int reports)
{
    return ofVerb == exitDone && reports > 0 ? exitMisused : ofVerb;
}

/// What verbs work with. Main thread; it outlives their tasks.
struct VerbContext {
    ScreenSource& screens;
    DisplayHardwareControlling& hardware;
    Diagnostics& diagnostics;
    UserDefaults& defaults;
    const Words& words;
    std::ostream& out;
    std::ostream& err;
    SystemEvents& events;
    Clock& clock;
    RunningProgram* program = nullptr; ///< null: the system has no way to hear of it
};

struct Verb {
    std::string name;
    std::string summary; ///< one line, without a full stop
    std::vector<Argument> arguments;
    /// Makes the task: it runs on the main thread, prints to the context's streams and returns the exit status.
    Task<int> (*run)(VerbContext& context, ArgumentValues values);
};

/// All of them, in the order of the help.
const std::vector<Verb>& verbs();

} // namespace lumenvale
