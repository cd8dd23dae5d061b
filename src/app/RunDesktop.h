// SPDX-License-Identifier: MIT
// The program without a command. An executable links one of two definitions: the desktop program itself, or the
// launcher, which starts it.
#pragma once

#include "app/cli/CommandLine.h"

namespace lumenvale {

/// Runs the desktop program as `line` asks, and returns the process's exit status.
int runDesktop(const CommandLine& line, int& argc, char** argv);

} // namespace lumenvale
