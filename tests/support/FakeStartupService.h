// SPDX-License-Identifier: MIT
// A login item that does what the test says.
#pragma once

#include "preferences/StartupService.h"

#include <optional>

namespace lumenvale {

class FakeStartupService final : public StartupService {
public:
    StartupStatus status() override { return current; }
    tl::expected<void, std::string> setEnabled(bool enabled) override
    {
        if (!failure.empty())
            return tl::unexpected(failure);
        current = statusAfterChange.value_or(enabled ? StartupStatus::enabled : StartupStatus::off);
        return {};
    }
    void openSystemSettings() override { ++settingsOpened; }

    StartupStatus current = StartupStatus::off;
    std::optional<StartupStatus> statusAfterChange; ///< instead of what was asked for
    std::string failure;                            ///< not empty: every change fails with it
    int settingsOpened = 0;
};

} // namespace lumenvale
