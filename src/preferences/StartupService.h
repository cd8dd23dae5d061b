// SPDX-License-Identifier: MIT
// Whether the program starts when the user logs in. Main thread only.
#pragma once

#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

enum class StartupStatus { off, enabled, requiresApproval, unavailable };

class StartupService {
public:
    virtual ~StartupService() = default;

    /// The state as the system has it now.
    virtual StartupStatus status() = 0;

    /// Registers or removes the login item; the error is the system's own description.
    virtual tl::expected<void, std::string> setEnabled(bool enabled) = 0;

    /// Opens the system's page for login items, where there is one.
    virtual void openSystemSettings() = 0;
};

} // namespace lumenvale
