// SPDX-License-Identifier: MIT
// Start at login by the desktop's autostart files (Desktop Application Autostart Specification 0.5): the user's
// file of a name stands before the system's. Made by the factory; main thread only.
// Desktops switch the file off in ways of their own; a request here switches it on again.
#pragma once

#include "platform/linux/xdg/DesktopEntry.h"
#include "preferences/StartupService.h"

#include <string>
#include <vector>

namespace lumenvale {

struct AutostartPlace {
    std::string identifier; ///< names the file
    std::string name;       ///< shown by the desktop's settings
    std::vector<std::string> command;
    std::string userFolder; ///< $XDG_CONFIG_HOME/autostart; empty: the user has none
    std::vector<std::string> systemFolders;
    std::string desktop; ///< $XDG_CURRENT_DESKTOP
    /// A sandbox keeps the file from the desktop's eyes.
    bool isSandboxed = false;
    std::vector<std::string> formerCommand{}; ///< that earlier versions wrote; empty: none
};

/// Where this user's desktop looks, for a program started by `command`.
AutostartPlace autostartPlace(const std::string& identifier, const std::string& name,
                              std::vector<std::string> command);

class XdgAutostart final : public StartupService {
public:
    explicit XdgAutostart(AutostartPlace place);

    /// Puts today's command into a file of an earlier version, whether it is switched on or off.
    void renew() const;

    StartupStatus status() override;
    tl::expected<void, std::string> setEnabled(bool enabled) override;
    void openSystemSettings() override {} // nothing here ever needs approval

private:
    std::string userFile() const;
    bool canWrite() const;
    bool appliesHere(const DesktopEntry& entry) const;
    std::optional<DesktopEntry> systemEntry() const;

    AutostartPlace place;
};

} // namespace lumenvale
