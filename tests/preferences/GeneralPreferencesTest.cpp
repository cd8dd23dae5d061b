// SPDX-License-Identifier: MIT
#include "preferences/GeneralPreferences.h"

#include "base/Identity.h"
#include "base/MemoryUserDefaults.h"
#include "support/FakeStartupService.h"

#include <gtest/gtest.h>
#include <utility>

namespace lumenvale {
namespace {

struct GeneralPreferencesTest : testing::Test {
    MemoryUserDefaults defaults;
    FakeStartupService startup;
};

TEST_F(GeneralPreferencesTest, ThePresentationIsReadByItsExactTextStoredAndAnnouncedAfterItChanged)
{
    EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, AppPresentation::menuBar);
    for (const PropertyValue& unknown : {PropertyValue("Dock"), PropertyValue(""), PropertyValue(2)}) {
        defaults.values.insert_or_assign("appPresentation", unknown);
        EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, AppPresentation::menuBar);
        EXPECT_EQ(defaults.values.at("appPresentation"), unknown);
    }
    for (const auto& [presentation, text] :
         {std::pair(AppPresentation::dock, "dock"), {AppPresentation::both, "both"}}) {
        GeneralPreferences preferences(defaults, startup);
        int announced = 0;
        preferences.presentationChanged = [&](AppPresentation next) {
            announced += *preferences.presentation == next;
        };
        preferences.setPresentation(presentation);
        EXPECT_EQ(announced, 1);
        EXPECT_EQ(defaults.values.at("appPresentation"), PropertyValue(text));
        EXPECT_EQ(*GeneralPreferences(defaults, startup).presentation, presentation);
    }
}

TEST_F(GeneralPreferencesTest, ShowsTheLoginItemAsTheSystemHasItUntilAChangeSucceeds)
{
    GeneralPreferences preferences(defaults, startup);
    startup.current = StartupStatus::enabled; // elsewhere
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::off);
    startup.failure = "Operation not permitted.";
    preferences.setLaunchAtStartup(false);
    EXPECT_EQ(*preferences.startupError, "Could not change Launch at Startup: Operation not permitted.");
    EXPECT_EQ(*preferences.startupStatus, StartupStatus::enabled);
    startup.failure.clear();
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
