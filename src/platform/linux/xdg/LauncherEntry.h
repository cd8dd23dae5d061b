// SPDX-License-Identifier: MIT
// The program's entry among the desktop's applications: a file in the user's own folder that adds the presets
// to the entry's actions. It stands before an installed entry of the same name. Main thread only.
#pragma once

#include "platform/Shell.h"

#include <string>
#include <vector>

namespace lumenvale {

/// Where applications are listed, the user's own folder first.
struct ApplicationFolders {
    std::string user;
    std::vector<std::string> system;
};

/// $XDG_DATA_HOME/applications and those of $XDG_DATA_DIRS.
ApplicationFolders applicationFolders();

class LauncherEntry {
public:
    LauncherEntry(ProgramIdentity identity, ApplicationFolders folders);

    /// Brings the file in line with `menu`, when `shown` or when the program is installed. Otherwise, and when
    /// the installed entry says the same already, removes it. Never touches a file that the program did not write.
    void update(const Menu& menu, bool shown) const;

    /// Removes the file.
    void withdraw() const;

    /// The entry's text: `installed` (may be empty) with an action for each row of `menu`.
    std::string text(const std::string& installed, const Menu& menu) const;

private:
    std::string path() const;
    std::string installedText() const;

    ProgramIdentity identity;
    ApplicationFolders folders;
};

} // namespace lumenvale
