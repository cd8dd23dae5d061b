// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/ScreenJoin.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

class ScreenJoin : public testing::Test {
protected:
    ScreenJoin() : device(system.addCard()) {}

    std::vector<Screen> join(const std::vector<WindowScreen>& screens) const
    {
        return joinScreens(readConnectors(system.paths()), screens);
    }

    FakeSysfs system;
    FakeSysfs::Path device;
};

TEST_F(ScreenJoin, WithoutAWindowSystemTheConnectorsAreTheScreens)
{
    system.addConnector(device, "DP-1", EdidBuilder{.serial = 7}.build());
    system.addConnector(device, "DP-2");
    system.addConnector(device, "eDP-1", EdidBuilder{.name = "B140"}.build());
    const std::vector<Screen> screens = join({});
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_TRUE(screens[0].isBuiltIn);
    EXPECT_EQ(screens[1].displayID, displayNumber("card0", "DP-1"));
    EXPECT_EQ(screens[1].vendor, 0x31B6U);
    EXPECT_EQ(screens[1].model, 0x2701U);
    EXPECT_EQ(screens[1].serial, 7U);
    EXPECT_TRUE(screens[1].uuid);
    EXPECT_FALSE(screens[1].mode);
}

TEST_F(ScreenJoin, ScreensAreJoinedBySerialBeforeModelAndName)
{
    system.addConnector(device, "HDMI-A-1", EdidBuilder{.serial = 1, .serialText = "ONE"}.build());
    system.addConnector(device, "HDMI-A-2", EdidBuilder{.serial = 2, .serialText = "TWO"}.build());
    const std::vector<Screen> screens =
        join({{.name = "HDMI-1",
               .model = "Studio 27",
               .serialNumber = "TWO",
               .width = 1280,
               .height = 720,
               .pixelRatio = 1.5,
               .refreshRate = 59.94,
               .isPrimary = true},
              {.name = "HDMI-2", .model = "Studio 27", .serialNumber = "1", .width = 800, .height = 600}});
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[0].serial, 2U);
    EXPECT_TRUE(screens[0].isMain);
    EXPECT_EQ(screens[0].frameWidth, 1280.0);
    EXPECT_EQ(screens[0].mode->pixelWidth, 1920);
    EXPECT_EQ(screens[0].mode->pixelHeight, 1080);
    EXPECT_EQ(screens[0].mode->refreshRate, 59.94);
    EXPECT_EQ(screens[1].serial, 1U);
    EXPECT_FALSE(screens[1].isMain);
}

TEST_F(ScreenJoin, TwinsAreJoinedByTheNamesThatServersGiveTheirOutputs)
{
    const EdidBlock twin = EdidBuilder{}.build();
    system.addConnector(device, "DP-1", twin);
    system.addConnector(device, "HDMI-A-1", twin);
    system.addConnector(device, "DP-2", twin);
    const std::vector<Screen> screens =
        join({{.name = "DP2", .model = "Studio 27"}, {.name = "HDMI-1", .model = "Studio 27"}, {.name = "DP-1"}});
    ASSERT_EQ(screens.size(), 3U);
    EXPECT_EQ(screens[0].displayID, displayNumber("card0", "DP-2"));
    EXPECT_EQ(screens[1].displayID, displayNumber("card0", "HDMI-A-1"));
    EXPECT_EQ(screens[2].displayID, displayNumber("card0", "DP-1"));
}

TEST_F(ScreenJoin, ScreensWithoutAConnectorAndConnectorsWithoutAScreenAreKept)
{
    EXPECT_TRUE(join({{.name = ""}}).empty()) << "a placeholder";
    std::vector<Screen> screens = join({{.name = "screen", .width = 640, .height = 480, .isPrimary = true}});
    ASSERT_EQ(screens.size(), 1U);
    EXPECT_EQ(screens[0].name, "screen");
    EXPECT_FALSE(screens[0].uuid);
    EXPECT_GE(screens[0].displayID, 0x80000000U);

    system.addConnector(device, "DP-1", EdidBuilder{.name = "First"}.build());
    system.addConnector(device, "DP-2", EdidBuilder{.name = "Mirror"}.build());
    EXPECT_EQ(join({{.name = "Odd-0", .width = 640}})[0].displayID, displayNumber("card0", "DP-1"))
        << "what is left on both sides belongs together";
    screens = join({{.name = "DP-1", .width = 640, .height = 480}});
    ASSERT_EQ(screens.size(), 2U);
    EXPECT_EQ(screens[1].name, "Mirror");
    EXPECT_EQ(screens[1].frameWidth, 0.0);
}

} // namespace
} // namespace lumenvale
