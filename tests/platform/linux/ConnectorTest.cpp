// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxDisplaySystem.h"

#include <gtest/gtest.h>
#include <set>

namespace lumenvale {
namespace {

std::vector<std::string> displayNames(const FakeSysfs& system)
{
    std::vector<std::string> names;
    const std::vector<Connector> all = readConnectors(system.paths());
    for (const Connector& each : all) {
        if (each.isDisplay())
            names.push_back(displayName(each, all));
    }
    return names;
}

std::string uuidOf(const FakeSysfs& system, const std::string& connector)
{
    return displayUuid(system.connector(connector), readConnectors(system.paths()));
}

TEST(Connectors, OnlyDisplaysThatShowAPictureAreListedPanelFirst)
{
    FakeSysfs system;
    const auto device = system.addCard();
    system.addConnector(device, "HDMI-A-10", EdidBuilder{.name = "Ten"}.build());
    system.addConnector(device, "HDMI-A-2", EdidBuilder{.name = "Two"}.build());
    system.addConnector(device, "DP-1");
    const auto off =
        system.addConnector(device, "DP-2", EdidBuilder{.name = "Switched off in the settings"}.build());
    system.write(off / "enabled", "disabled");
    system.addConnector(device, "eDP-1", EdidBuilder{.name = "B140"}.build());
    system.addConnector(device, "Writeback-1", EdidBuilder{}.build());
    system.write(system.root() / "class/drm/version", "drm 1.1.0");
    EXPECT_EQ(displayNames(system), (std::vector<std::string>{"Built-in Display", "Two", "Ten"}));
}

TEST(Connectors, DisplaysThatTheDesktopTookOutOfUseToSavePowerAreDarkAndNotGone)
{
    FakeSysfs system;
    const auto device = system.addCard();
    const auto panel = system.addConnector(device, "eDP-1", EdidBuilder{}.build());
    const auto external = system.addConnector(device, "DP-1", EdidBuilder{}.build());
    system.addConnector(device, "DP-2");
    system.write(panel / "enabled", "disabled"); // the lid is closed
    EXPECT_EQ(displayNames(system), std::vector<std::string>{"Studio 27"});
    EXPECT_FALSE(system.connector("DP-1").isAsleep);
    system.write(external / "enabled", "disabled");
    EXPECT_EQ(displayNames(system), (std::vector<std::string>{"Built-in Display", "Studio 27"}));
    EXPECT_TRUE(system.connector("DP-1").isAsleep);
}

TEST(Connectors, DriversThatLeaveTheRecordsAsideCountAsDrivenAndAwake)
{
    FakeSysfs system;
    const auto device = system.addCard("card0", "nvidia");
    const auto connector = system.addConnector(device, "DP-1", EdidBuilder{}.build());
    system.write(connector / "enabled", "disabled");
    system.write(connector / "dpms", "Off");
    EXPECT_TRUE(system.connector("DP-1").isDisplay());
    EXPECT_FALSE(system.connector("DP-1").isAsleep);
}

TEST(Connectors, NamesThatWouldBeTheSameCarryTheirConnector)
{
    FakeSysfs system;
    const auto device = system.addCard();
    system.addConnector(device, "DP-1", EdidBuilder{}.build());
    system.addConnector(device, "DP-2", EdidBuilder{}.build());
    system.addConnector(device, "HDMI-A-1", EdidBuilder{.name = ""}.build());
    EXPECT_EQ(displayNames(system),
              (std::vector<std::string>{"Studio 27 (DP-1)", "Studio 27 (DP-2)", "Display (HDMI-A-1)"}));
}

TEST(Connectors, DisplayNumbersDifferAndDependOnNothingButTheName)
{
    std::set<std::uint32_t> numbers;
    for (const char* card : {"card0", "card1", "card12", "card999"}) {
        for (const char* name : {"DP-1", "DP-2", "HDMI-A-1", "HDMI-B-1", "eDP-1", "DP-300", "Odd", "Odd-1"})
            EXPECT_TRUE(numbers.insert(displayNumber(card, name)).second) << card << name;
    }
    EXPECT_EQ(displayNumber("card1", "DP-2"), 0x010A02U);
}

TEST(Identity, AMonitorIsKnownByItsSerialOnEverySocketElseByItsPlaceWhateverTheCardIsCalled)
{
    const auto uuidAt = [](const char* card, const char* address, const char* connector, const EdidBlock& edid) {
        FakeSysfs system;
        system.addConnector(system.addCard(card, "i915", address), connector, edid, card);
        return uuidOf(system, connector);
    };
    const EdidBlock edid = EdidBuilder{.serial = 7}.build();
    const EdidBlock overHdmi = EdidBuilder{.serial = 7, .revision = 3, .videoInput = 0x80, .width = 1920}.build();
    EXPECT_EQ(uuidAt("card0", "0000:00:02.0", "DP-1", edid),
              uuidAt("card1", "0000:03:00.0", "HDMI-A-2", overHdmi));

    const EdidBlock nameless = EdidBuilder{}.build();
    const std::string before = uuidAt("card0", "0000:00:02.0", "DP-1", nameless);
    EXPECT_EQ(uuidAt("card1", "0000:00:02.0", "DP-1", nameless), before);
    EXPECT_NE(uuidAt("card0", "0000:00:02.0", "DP-2", nameless), before);
}

TEST(Identity, MonitorsThatClaimTheSameIdentityAreToldApartByTheirPlace)
{
    FakeSysfs system;
    const auto device = system.addCard();
    const EdidBlock edid = EdidBuilder{.serial = 7}.build();
    system.addConnector(device, "DP-1", edid);
    const std::string alone = uuidOf(system, "DP-1");
    const auto second = system.addConnector(device, "DP-2", edid);
    EXPECT_NE(uuidOf(system, "DP-1"), uuidOf(system, "DP-2"));
    EXPECT_NE(uuidOf(system, "DP-1"), alone);
    system.write(second / "status", "disconnected");
    EXPECT_EQ(uuidOf(system, "DP-1"), alone);
}

TEST(DisplaySystem, AnswersHoldForTheMomentOfTheCall)
{
    FakeSysfs system;
    const auto device = system.addCard();
    const auto connector = system.addConnector(device, "DP-1", EdidBuilder{.serial = 7}.build());
    LinuxDisplaySystem displays(system.paths());
    const std::uint32_t number = displayNumber("card0", "DP-1");
    const auto uuid = displays.uuid(number);
    EXPECT_TRUE(displays.isOnline(number));
    ASSERT_TRUE(uuid);

    const EdidBlock other = EdidBuilder{.serial = 8}.build();
    system.write(connector / "edid", std::string(other.begin(), other.end()), false);
    EXPECT_NE(displays.uuid(number), uuid);
    system.write(connector / "status", "disconnected");
    EXPECT_FALSE(displays.isOnline(number));
    EXPECT_FALSE(displays.uuid(number));
    EXPECT_FALSE(displays.informationDictionary(number));
}

} // namespace
} // namespace lumenvale
