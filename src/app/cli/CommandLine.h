// SPDX-License-Identifier: MIT
// What the program was asked for. Parsing touches nothing: no file, no application object.
#pragma once

#include "app/cli/DesktopRequest.h"
#include "app/cli/Verb.h"

#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

struct CommandLine {
    std::optional<std::string> simulationFolder; ///< empty: the ready-made monitors; none: the real displays
    bool isVerbose = false;
    std::string answer;         ///< the help or the version, to be printed instead of anything else; else empty
    const Verb* verb = nullptr; ///< one of `verbs`; null: the desktop program
    ArgumentValues values;      ///< of the verb
    std::optional<DesktopRequest> request; ///< of the desktop program that runs, or that starts now
};

/// What may stand before a verb.
const std::vector<Argument>& programOptions();

/// Reads the arguments that follow the program's name, which hints give as the user did. The error is the text for
/// standard error.
tl::expected<CommandLine, std::string> parseCommandLine(std::vector<std::string> arguments,
                                                        const std::string& program = "lumenvale");

} // namespace lumenvale
