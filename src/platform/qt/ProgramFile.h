// SPDX-License-Identifier: MIT
// The files of the program. Users start `lumenvale`; where that is the command line alone, the desktop program is
// a file of its own, beside it in a build tree and in the folder for such files in an installation. Main thread,
// after the application object.
#pragma once

#include <optional>
#include <string>

namespace lumenvale {

/// The file that starts this program, as users do; absolute.
std::string programFile();

/// What a user types to start this program: "lumenvale" where the shell finds this very file by that name, else
/// its path, in quotes where it needs them.
std::string programCommand();

/// The desktop program's file, absolute; none when it is not installed.
std::optional<std::string> desktopProgramFile();

} // namespace lumenvale
