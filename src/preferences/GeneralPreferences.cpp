// SPDX-License-Identifier: MIT
#include "preferences/GeneralPreferences.h"

#include "base/Identity.h"

namespace lumenvale {

namespace {

constexpr char presentationKey[] = "appPresentation";
constexpr char migratedKey[] = "migratedLegacyDefaults";

} // namespace

std::string_view rawValue(AppPresentation presentation)
{
    switch (presentation) {
    case AppPresentation::menuBar:
        return "menuBar";
    case AppPresentation::dock:
        return "dock";
    case AppPresentation::both:
        return "both";
    }
    return {};
}

std::optional<AppPresentation> appPresentationFromRawValue(std::string_view text)
{
    for (const AppPresentation each : allPresentations) {
        if (rawValue(each) == text)
            return each;
    }
    return std::nullopt;
}

GeneralPreferences::GeneralPreferences(UserDefaults& defaults, StartupService& startup)
    : defaults(defaults), startup(startup)
{
    const auto stored = readDefault<std::string>(defaults, presentationKey);
    presentation.set(appPresentationFromRawValue(stored.value_or("")).value_or(AppPresentation::menuBar));
    startupStatus.set(startup.status());
}

void GeneralPreferences::setPresentation(AppPresentation next)
{
    presentation.set(next);
    defaults.set(presentationKey, PropertyValue(std::string(rawValue(next))));
    if (const auto call = presentationChanged) // a copy: it may replace itself
        call(next);
}

void GeneralPreferences::setLaunchAtStartup(bool enabled)
{
    startupError.setIfChanged(std::nullopt);
    if (const auto done = startup.setEnabled(enabled); !done)
        startupError.set("Could not change Launch at Startup: " + done.error());
    refreshStartupStatus();
}

void GeneralPreferences::refreshStartupStatus() { startupStatus.setIfChanged(startup.status()); }

void GeneralPreferences::openLoginItems() { startup.openSystemSettings(); }

void migrateLegacyDefaults(UserDefaults& defaults)
{
    if (readDefault<bool>(defaults, migratedKey).value_or(false))
        return;
    for (const char* domain : legacyDomains) {
        for (const auto& [key, value] : defaults.domain(domain)) {
            if (!defaults.value(key))
                defaults.set(key, value);
        }
    }
    defaults.set(migratedKey, true);
}

} // namespace lumenvale
