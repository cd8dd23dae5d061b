// SPDX-License-Identifier: MIT
// The choices of the General page: where the program presents itself and whether it starts at login. Main
// thread only.
#pragma once

#include "base/Published.h"
#include "base/UserDefaults.h"
#include "preferences/StartupService.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace lumenvale {

/// Where the program presents itself.
enum class AppPresentation { menuBar, dock, both };

inline constexpr std::array allPresentations = {AppPresentation::menuBar, AppPresentation::dock,
                                                AppPresentation::both};

/// The stored form: "menuBar", "dock", "both".
std::string_view rawValue(AppPresentation presentation);

/// Accepts exactly the texts of `rawValue`.
std::optional<AppPresentation> appPresentationFromRawValue(std::string_view text);

class GeneralPreferences {
public:
    /// Both references must outlive the object.
    GeneralPreferences(UserDefaults& defaults, StartupService& startup);

    Published<AppPresentation> presentation{AppPresentation::menuBar};
    Published<StartupStatus> startupStatus{StartupStatus::unavailable}; ///< as last read from the system
    Published<std::optional<std::string>> startupError{std::nullopt};   ///< the last failed change

    /// Set by the desktop program: false while the system shows no status items, whatever `presentation` says.
    Published<bool> hasStatusArea{true};

    /// Called with the new presentation after it changed.
    std::function<void(AppPresentation)> presentationChanged;

    void setPresentation(AppPresentation next);
    void setLaunchAtStartup(bool enabled);
    void refreshStartupStatus();
    /// Opens the system's page for login items.
    void openLoginItems();

private:
    UserDefaults& defaults;
    StartupService& startup;
};

/// Takes over, once, what earlier releases stored under the two domains of `legacyDomains`; never overwrites a
/// value that is set.
void migrateLegacyDefaults(UserDefaults& defaults);

} // namespace lumenvale
