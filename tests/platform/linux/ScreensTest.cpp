// SPDX-License-Identifier: MIT
// Which displays there are, what they are called, and which screen of the window system is which.
#include "FakeSysfs.h"

#include "platform/linux/displays/DisplayIdentity.h"
#include "platform/linux/displays/LinuxScreenSource.h"
#include "platform/linux/displays/ScreenJoin.h"

#include <gtest/gtest.h>
#include <set>

namespace lumenvale {
namespace {

using Names = std::vector<std::string>;

std::vector<Screen> join(const FakeSysfs& system, const std::vector<WindowScreen>& windows = {})
{
    return joinScreens(readConnectors(system.paths()), windows);
}

Names names(const std::vector<Screen>& screens)
{
    Names list;
    for (const Screen& each : screens)
        list.push_back(each.name);
    return list;
}

std::string uuid(const FakeSysfs& system, std::size_t position = 0) { return *join(system).at(position).uuid; }

TEST(Screens, WhatShowsAPictureIsADisplayPanelFirst)
{
    FakeSysfs system("i915 HDMI-A-10=O HDMI-A-2=S DP-1 DP-2=T DP-3=T eDP-1=P Writeback-1=S");
    system.write(system.root() / "class/drm/version", "drm 1.1.0");
    EXPECT_EQ(names(join(system)),
              (Names{"Built-in Display", "Twin (DP-2)", "Twin (DP-3)", "Studio 27", "Office 24"}));
    system.write(system["DP-3"] / "enabled", "disabled"); // switched off in the settings
    system.plug(system["HDMI-A-10"], EdidBlock{});
    EXPECT_EQ(names(join(system)), (Names{"Built-in Display", "Twin", "Studio 27", "Display (HDMI-A-10)"}));
    const Screen studio = join(system)[2];
    EXPECT_EQ(std::tuple(studio.vendor, studio.model, studio.serial), std::tuple(0x31B6U, 0x2701U, 1U));
    EXPECT_TRUE(join(system)[0].isBuiltIn && !studio.isBuiltIn && !studio.mode);
}

TEST(Screens, DisplaysTakenOutOfUseToSavePowerAreDarkAndNotGone)
{
    const auto dark = [](const FakeSysfs& system) {
        LinuxScreenSource source(system.records(), nullptr, {});
        return source.isAsleep(displayNumber("card0", "DP-1"));
    };
    FakeSysfs system("i915 eDP-1=P DP-1=S DP-2");
    system.write(system["eDP-1"] / "enabled", "disabled"); // the lid is closed
    EXPECT_EQ(names(join(system)), Names{"Studio 27"});
    EXPECT_FALSE(dark(system));
    system.write(system["DP-1"] / "enabled", "disabled");
    EXPECT_EQ(names(join(system)), (Names{"Built-in Display", "Studio 27"}));
    EXPECT_TRUE(dark(system));
    system.write(system["DP-1"] / "enabled", "enabled");
    system.write(system["DP-1"] / "dpms", "Standby");
    EXPECT_TRUE(dark(system));
    system.write(system["DP-1"] / "status", "disconnected");
    EXPECT_FALSE(dark(system));

    FakeSysfs unrecorded("nvidia DP-1=S"); // this driver leaves the kernel's records aside
    unrecorded.write(unrecorded["DP-1"] / "enabled", "disabled");
    unrecorded.write(unrecorded["DP-1"] / "dpms", "Off");
    EXPECT_EQ(names(join(unrecorded)), Names{"Studio 27"});
    EXPECT_FALSE(dark(unrecorded));
}

TEST(Screens, NumbersDifferAndDependOnNothingButTheName)
{
    std::set<std::uint32_t> numbers;
    for (const char* name : {"DP-1", "DP-2", "HDMI-A-1", "HDMI-B-1", "eDP-1", "DP-300", "Odd", "Odd-1"}) {
        for (const char* card : {"card0", "card1", "card12", "card999"})
            EXPECT_TRUE(numbers.insert(displayNumber(card, name)).second) << card << name;
    }
    EXPECT_EQ(displayNumber("card1", "DP-2"), 0x010A02U);
}

TEST(Screens, AMonitorIsKnownByItsSerialOnEverySocketElseByItsPlace)
{
    FakeSysfs system("i915 DP-1=S");
    const FakeSysfs elsewhere("i915\namdgpu HDMI-A-2=S");
    EXPECT_EQ(uuid(system), uuid(elsewhere));
    const EdidBlock overHdmi =
        EdidBuilder{.serial = 1, .serialText = "QX7", .revision = 3, .videoInput = 0x80}.build();
    const std::string before = uuid(system);
    system.plug(system["DP-1"], overHdmi);
    EXPECT_EQ(uuid(system), before);

    system.addConnector("card0", "DP-2=S"); // two that claim the same identity
    system.plug(system["DP-2"], overHdmi);
    EXPECT_NE(uuid(system), uuid(system, 1));
    EXPECT_NE(uuid(system), before);
    system.write(system["DP-2"] / "status", "disconnected");
    EXPECT_EQ(uuid(system), before);

    EXPECT_EQ(uuid(FakeSysfs("i915 DP-1=T")), uuid(FakeSysfs("i915 DP-1=T")));
    EXPECT_NE(uuid(FakeSysfs("i915 DP-1=T")), uuid(FakeSysfs("i915 DP-2=T")));
}

TEST(Screens, WindowsAreJoinedBySerialThenModelAndNameThenWhatIsLeft)
{
    const struct {
        const char* machine;
        std::vector<WindowScreen> windows;
        Names connectors; ///< in the order of the screens; "" for a window without one
    } rows[] = {
        {"i915 HDMI-A-1=S HDMI-A-2=O",
         {{.name = "HDMI-1", .serialNumber = "2"}, {.name = "HDMI-2", .serialNumber = "QX7"}},
         {"HDMI-A-2", "HDMI-A-1"}},
        {"i915 DP-1=T HDMI-A-1=T DP-2=T",
         {{.name = "DP2", .model = "Twin"}, {.name = "HDMI-1", .model = "Twin"}, {.name = "DP-1"}},
         {"DP-2", "HDMI-A-1", "DP-1"}},
        {"i915 DP-1=S DP-2=O", {{.name = "x", .model = "Office 24"}}, {"DP-2", "DP-1"}},
        {"i915 DP-1=S", {{.name = "Odd-0"}}, {"DP-1"}},
        {"i915", {{.name = ""}, {.name = "screen"}}, {""}},
    };
    for (const auto& row : rows) {
        const std::vector<Screen> screens = join(FakeSysfs(row.machine), row.windows);
        ASSERT_EQ(screens.size(), row.connectors.size());
        for (std::size_t i = 0; i < screens.size(); ++i) {
            const bool isJoined = screens[i].displayID == displayNumber("card0", row.connectors[i]);
            EXPECT_TRUE(screens[i].uuid ? isJoined : screens[i].displayID >= 0x80000000U) << row.machine;
            EXPECT_EQ(screens[i].uuid.has_value(), !row.connectors[i].empty());
        }
    }
    const WindowScreen window{
        .name = "DP-1", .width = 1280, .height = 720, .pixelRatio = 1.5, .refreshRate = 59.94, .isPrimary = true};
    const std::vector<Screen> screens = join(FakeSysfs("i915 DP-1=S DP-2=O"), {window});
    EXPECT_TRUE(screens[0].isMain && !screens[1].isMain);
    EXPECT_EQ(screens[0].frameWidth, 1280.0);
    EXPECT_EQ(std::tuple(screens[0].mode->pixelWidth, screens[0].mode->pixelHeight), std::tuple(1920, 1080));
    EXPECT_EQ(screens[0].mode->refreshRate, 59.94);
    EXPECT_EQ(screens[1].frameWidth, 0.0) << "a mirror is no window";
}

TEST(Screens, TheModeIsTheOneThatIsKnownExactly)
{
    const FakeSysfs system("i915 DP-1=S DP-2=O HDMI-A-1=T");
    const auto numbers = [](const Screen& screen) {
        const ScreenMode mode = screen.mode.value_or(ScreenMode());
        return std::tuple(mode.pixelWidth, mode.pixelHeight, mode.refreshRate);
    };
    const KernelModes kernel = {{displayNumber("card0", "DP-2"), {1920, 1080, 59.95}},
                                {displayNumber("card0", "HDMI-A-1"), {1280, 1024, 75}}};
    const WindowScreen rounded{.name = "DP-1", .width = 1707, .height = 960, .pixelRatio = 1.5, .isPrimary = true};
    WindowScreen exact = rounded;
    exact.mode = {2560, 1440, 143.91};
    const WindowScreen turned{.name = "DP-2", .width = 720, .height = 1280, .pixelRatio = 1.5};
    const auto joined = joinScreens(readConnectors(system.paths()), {exact, turned}, kernel);
    EXPECT_EQ(numbers(joined.at(0)), std::tuple(2560, 1440, 143.91));
    EXPECT_EQ(numbers(joined.at(1)), std::tuple(1080, 1920, 59.95));
    EXPECT_EQ(numbers(joined.at(2)), std::tuple(1280, 1024, 75));
    EXPECT_EQ(numbers(joinScreens(readConnectors(system.paths()), {rounded}, {}).at(0)),
              std::tuple(2561, 1440, 0));

    const auto described =
        describeDisplays(readConnectors(system.paths()), {{.name = "VNC-0", .isPrimary = true}, exact}, kernel);
    EXPECT_EQ(names(described), names(join(system))) << "in the order of the connectors, and no other machine's";
    EXPECT_EQ(numbers(described.at(0)), std::tuple(2560, 1440, 143.91));
    EXPECT_TRUE(described.at(0).isMain && !described.at(1).isMain);
}

} // namespace
} // namespace lumenvale
