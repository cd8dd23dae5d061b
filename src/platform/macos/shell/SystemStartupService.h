// SPDX-License-Identifier: MIT
// The program as a login item. The system knows only bundles, best those in the Applications folder. Main thread.
#pragma once

#include "preferences/StartupService.h"

namespace lumenvale {

class SystemStartupService final : public StartupService {
public:
    StartupStatus status() override;
    tl::expected<void, std::string> setEnabled(bool enabled) override;
    void openSystemSettings() override;
};

/// For simulated displays: what the system starts at login has no arguments, so it would be the program for the
/// real ones.
class NoLoginItem final : public StartupService {
public:
    StartupStatus status() override { return StartupStatus::unavailable; }
    tl::expected<void, std::string> setEnabled(bool) override
    {
        return tl::unexpected(std::string("macOS starts only programs for real displays at login."));
    }
    void openSystemSettings() override { SystemStartupService().openSystemSettings(); }
};

} // namespace lumenvale
