// SPDX-License-Identifier: MIT
// Carries out a command of the command line: without a window system, without the instance lock.
#pragma once

#include "app/cli/CommandLine.h"
#include "platform/Platform.h"

#include <optional>
#include <ostream>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// The folder to simulate: absolute; made where the ready-made monitors were asked for. The error is a whole
/// sentence for the user.
tl::expected<std::optional<std::string>, std::string> simulationFolder(const CommandLine& line);

/// Writes lines to standard error, each with the seconds since this function was called; any thread.
LogSink standardErrorLog();

/// Runs the line's verb to its end on a core application of its own and returns the exit status.
int runVerb(const CommandLine& line, int& argc, char** argv, std::ostream& out, std::ostream& err);

} // namespace lumenvale
