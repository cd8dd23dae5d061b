// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/Backlight.h"
#include "platform/linux/displays/LinuxBrightness.h"

#include <cerrno>
#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

const EdidBlock panelEdid = EdidBuilder{.name = ""}.build();

std::string chosen(const FakeSysfs& system, const std::string& panel = "eDP-1")
{
    const auto backlight =
        chooseBacklight(system.connector(panel), readConnectors(system.paths()), readBacklights(system.paths()));
    return backlight ? backlight->name : "none";
}

TEST(Backlight, FirmwareComesBeforePlatformBeforeThePanelsOwnBeforeTheCards)
{
    FakeSysfs system;
    const auto device = system.addCard();
    const auto panel = system.addConnector(device, "eDP-1", panelEdid);
    const auto other = system.addPciDevice("0000:01:00.0", "nvidia", "0x030200");
    EXPECT_EQ(chosen(system), "none");
    system.addBacklight(other, "nvidia_0", "raw", 100, 50); // the other card's
    EXPECT_EQ(chosen(system), "none");
    system.addBacklight(device, "card_bl", "raw", 100, 50);
    EXPECT_EQ(chosen(system), "card_bl");
    system.addBacklight(panel, "intel_backlight", "raw", 1515, 800);
    EXPECT_EQ(chosen(system), "intel_backlight");
    system.addBacklight(device, "thinkpad_screen", "platform", 15, 7);
    EXPECT_EQ(chosen(system), "thinkpad_screen");
    system.addBacklight(device, "acpi_video0", "firmware", 15, 7);
    EXPECT_EQ(chosen(system), "acpi_video0");
}

TEST(Backlight, TwoPanelsEachGetTheirOwn)
{
    FakeSysfs system;
    const auto device = system.addCard();
    const auto first = system.addConnector(device, "eDP-1", panelEdid);
    const auto second = system.addConnector(device, "eDP-2", panelEdid);
    system.addBacklight(second, "card0-eDP-2-backlight", "raw", 100, 50);
    system.addBacklight(first, "intel_backlight", "raw", 100, 50);
    system.addBacklight(device, "acpi_video0", "firmware", 15, 7);
    EXPECT_EQ(chosen(system, "eDP-1"), "intel_backlight");
    EXPECT_EQ(chosen(system, "eDP-2"), "card0-eDP-2-backlight");
}

TEST(Backlight, DevicesOfOtherThingsAndBrokenOnesAreLeftAlone)
{
    FakeSysfs system;
    const auto device = system.addCard();
    system.addConnector(device, "eDP-1", panelEdid);
    const auto external = system.addConnector(device, "DP-1", panelEdid);
    system.addBacklight(external, "on_another_connector", "platform", 100, 50);
    const auto client = system.root() / "devices/i2c-7/7-0037";
    FakeSysfs::link(system.root() / "bus/i2c", client / "subsystem");
    system.addBacklight(client, "ddcci7", "raw", 100, 50);
    system.addBacklight(device, "zero", "firmware", 0, 0);
    FakeSysfs::write(system.addBacklight(device, "words", "firmware", 1, 1) / "max_brightness", "many");
    EXPECT_EQ(chosen(system), "none");
    EXPECT_EQ(chosen(system, "DP-1"), "none");
    const auto board = system.root() / "devices/platform/backlight";
    FakeSysfs::link(system.root() / "bus/platform", board / "subsystem");
    system.addBacklight(board, "pwm", "raw", 255, 50);
    EXPECT_EQ(chosen(system), "pwm");
}

TEST(Backlight, TheLowestLevelStaysVisibleAndTheScaleIsUsedWhole)
{
    for (const std::int64_t maximum : {2, 3, 15, 99, 100, 255, 1515, 65535}) {
        Backlight backlight;
        backlight.maximum = maximum;
        EXPECT_GE(backlight.rawValue(0.0), 1) << maximum;
        EXPECT_LE(backlight.rawValue(0.0), std::max<std::int64_t>(1, maximum / 100)) << maximum;
        EXPECT_EQ(backlight.rawValue(1.0), maximum);
        EXPECT_EQ(backlight.level(backlight.rawValue(0.0)), 0.0);
        EXPECT_EQ(backlight.level(maximum), 1.0);
        EXPECT_EQ(backlight.level(0), 0.0);
        for (std::int64_t raw = backlight.minimum(); raw <= std::min<std::int64_t>(maximum, 2000); ++raw)
            ASSERT_EQ(backlight.rawValue(backlight.level(raw)), raw) << maximum;
    }
    Backlight onOff;
    onOff.maximum = 1;
    EXPECT_EQ(onOff.rawValue(0.0), 0);
}

class LinuxBrightnessTest : public testing::Test {
protected:
    LinuxBrightnessTest()
    {
        const auto device = system.addCard();
        const auto panel = system.addConnector(device, "eDP-1", panelEdid);
        system.addConnector(device, "DP-1", EdidBuilder{}.build());
        file = system.addBacklight(panel, "intel_backlight", "raw", 1515, 800) / "brightness";
    }

    /// The file takes values unless `fileError` says otherwise; the service then answers `serviceError`.
    NativeFunctions functions(int fileError = 0, int serviceError = 0)
    {
        const auto intoFile = [fileError](const FakeSysfs::Path& path, std::int64_t raw) {
            return fileError != 0 ? fileError : writeNumber(path, raw);
        };
        const auto throughService = [this, serviceError](const std::string& name, std::int64_t raw) {
            asked.push_back(name + " " + std::to_string(raw));
            return serviceError != 0 ? serviceError : writeNumber(file, raw);
        };
        return makeLinuxBrightness(system.paths(), {intoFile, throughService}, {});
    }

    float read(const NativeFunctions& native)
    {
        float level = -1.0F;
        EXPECT_EQ(native.getter(panelID, &level), 0);
        return level;
    }

    FakeSysfs system;
    FakeSysfs::Path file;
    std::vector<std::string> asked;
    const std::uint32_t panelID = displayNumber("card0", "eDP-1");
};

TEST_F(LinuxBrightnessTest, ALevelThatWasSetReadsBackExactlyWhileThePanelHoldsIt)
{
    const NativeFunctions native = functions();
    EXPECT_FLOAT_EQ(read(native), 785.0F / 1500.0F);
    EXPECT_EQ(native.setter(panelID, 0.33333F), 0);
    EXPECT_EQ(readNumber(file), 515);
    EXPECT_EQ(read(native), 0.33333F);
    FakeSysfs::write(file, "516"); // a brightness key
    EXPECT_FLOAT_EQ(read(native), 501.0F / 1500.0F);
    EXPECT_EQ(native.setter(panelID, 0.0F), 0);
    EXPECT_EQ(readNumber(file), 15);
    EXPECT_EQ(read(native), 0.0F);
}

TEST_F(LinuxBrightnessTest, OtherDisplaysAndImpossibleLevelsAreErrors)
{
    const NativeFunctions native = functions();
    float level = 0.0F;
    EXPECT_EQ(native.getter(displayNumber("card0", "DP-1"), &level), ENODEV);
    EXPECT_EQ(native.setter(displayNumber("card0", "DP-1"), 0.5F), ENODEV);
    EXPECT_EQ(native.setter(panelID, std::nanf("")), EINVAL);
    EXPECT_EQ(readNumber(file), 800);
    FakeSysfs::write(file, "bright");
    EXPECT_EQ(native.getter(panelID, &level), EIO);
}

TEST_F(LinuxBrightnessTest, OnlyAMissingRightIsAReasonToAskTheService)
{
    EXPECT_EQ(functions(EIO).setter(panelID, 0.25F), EIO);
    EXPECT_TRUE(asked.empty());
    const NativeFunctions native = functions(EACCES);
    EXPECT_EQ(native.setter(panelID, 0.5F), 0);
    EXPECT_EQ(asked, std::vector<std::string>{"intel_backlight 765"});
    EXPECT_EQ(read(native), 0.5F);
    EXPECT_EQ(functions(EACCES, ETIMEDOUT).setter(panelID, 0.6F), ETIMEDOUT);
}

} // namespace
} // namespace lumenvale
