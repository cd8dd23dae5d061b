// SPDX-License-Identifier: MIT
#include "preferences/GeneralPreferences.h"

#include "base/Identity.h"
#include "base/MemoryUserDefaults.h"
#include "support/FakeStartupService.h"

#include <gtest/gtest.h>
#include <vector>

namespace lumenvale {
namespace {

struct GeneralPreferencesTest : testing::Test {
    MemoryUserDefaults defaults;
    FakeStartupService startup;
};

TEST_F(GeneralPreferencesTest, ReadsThePresentationByItsExactTextAndFallsBackWithoutRewritingIt)
{
    EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, AppPresentation::menuBar);
    for (const AppPresentation each : allPresentations) {
        defaults.values.insert_or_assign("appPresentation", std::string(rawValue(each)));
        EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, each);
    }
    for (const PropertyValue& unknown : {PropertyValue("Dock"), PropertyValue(""), PropertyValue(2)}) {
        defaults.values.insert_or_assign("appPresentation", unknown);
        EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, AppPresentation::menuBar);
        EXPECT_EQ(defaults.values.at("appPresentation"), unknown);
    }
}

TEST_F(GeneralPreferencesTest, AChosenPresentationIsStoredAndAnnouncedOnceAfterItChanged)
{
    GeneralPreferences preferences(defaults, startup);
    std::vector<AppPresentation> announced;
    preferences.presentationChanged = [&](AppPresentation next) {
        EXPECT_EQ(*preferences.presentation, next);
        announced.push_back(next);
    };
    preferences.setPresentation(AppPresentation::both);
    EXPECT_EQ(announced, std::vector{AppPresentation::both});
    EXPECT_EQ(defaults.values.at("appPresentation"), PropertyValue("both"));
}

TEST_F(GeneralPreferencesTest, ShowsTheLoginItemAsTheSystemHasItAndWhyAChangeFailed)
{
    startup.statusAfterChange = StartupStatus::requiresApproval;
    GeneralPreferences preferences(defaults, startup);
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::off);
    preferences.setLaunchAtStartup(true);
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::requiresApproval);
    startup.current = StartupStatus::enabled; // approved elsewhere
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::requiresApproval);
    preferences.refreshStartupStatus();
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::enabled);

    startup.failure = "Operation not permitted.";
    startup.current = StartupStatus::unavailable;
    preferences.setLaunchAtStartup(false);
    EXPECT_EQ(*preferences.startupError, "Could not change Launch at Startup: Operation not permitted.");
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::unavailable);
    startup.failure.clear();
    startup.statusAfterChange.reset();
    preferences.setLaunchAtStartup(false);
    EXPECT_EQ(*preferences.startupError, std::nullopt);
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::off);
}

TEST_F(GeneralPreferencesTest, LegacySettingsAreTakenOverOnceAndNeverReplaceAValue)
{
    defaults.values.insert_or_assign("kept", "mine");
    defaults.domains[legacyDomains[0]] = {{"kept", "old"}, {"both", 1}, {"data", PropertyData{1, 2}}};
    defaults.domains[legacyDomains[1]] = {{"both", 2}, {"second", true}, {"migratedLegacyDefaults", false}};
    migrateLegacyDefaults(defaults);
    const std::map<std::string, PropertyValue> expected{{"kept", "mine"},
                                                        {"both", 1},
                                                        {"data", PropertyData{1, 2}},
                                                        {"second", true},
                                                        {"migratedLegacyDefaults", true}};
    EXPECT_EQ(defaults.values, expected);
    defaults.domains[legacyDomains[0]].emplace_back("later", 3);
    migrateLegacyDefaults(defaults);
    EXPECT_EQ(defaults.values, expected);

    MemoryUserDefaults empty;
    migrateLegacyDefaults(empty);
    EXPECT_EQ(empty.values.size(), 1u) << "only the mark that it was done";
}

} // namespace
} // namespace lumenvale
