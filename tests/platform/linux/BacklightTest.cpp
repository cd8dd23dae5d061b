// SPDX-License-Identifier: MIT
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxBrightness.h"

#include <cerrno>
#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(Backlight, EachPanelGetsTheDeviceThatDimsIt)
{
    const struct {
        const char* machine;
        const char* devices; ///< "name place type maximum"; places: a connector, the card, or something else
        const char* chosen;  ///< of each display; "-" where none is
    } rows[] = {
        {"i915 eDP-1=P", "", "-"},
        {"i915 eDP-1=P", "nvidia_0 other raw 9, ddcci7 i2c raw 9", "-"},
        {"i915 eDP-1=P", "zero card0 firmware 0, words card0 firmware many", "-"},
        {"i915 eDP-1=P DP-1=S", "theirs DP-1 platform 9", "- -"},
        {"i915 eDP-1=P DP-1=S", "theirs DP-1 platform 9, intel eDP-1 raw 9", "intel -"},
        {"i915 eDP-1=P", "pwm board raw 9", "pwm"},
        {"i915 eDP-1=P", "pwm board raw 9, card_bl card0 raw 9", "card_bl"},
        {"i915 eDP-1=P", "card_bl card0 raw 9, intel eDP-1 raw 9", "intel"},
        {"i915 eDP-1=P", "intel eDP-1 raw 9, pad card0 platform 9", "pad"},
        {"i915 eDP-1=P", "pad card0 platform 9, acpi card0 firmware 9", "acpi"},
        {"i915 eDP-1=P eDP-2=P", "two eDP-2 raw 9, one eDP-1 raw 9, acpi card0 firmware 9", "one two"},
    };
    for (const auto& row : rows) {
        FakeSysfs system(row.machine);
        system.link(system.root() / "bus/i2c", system.root() / "devices/i2c/subsystem");
        system.link(system.root() / "bus/platform", system.root() / "devices/board/subsystem");
        std::istringstream devices(row.devices);
        for (std::string device; std::getline(devices, device, ',');) {
            std::istringstream words(device);
            std::string name, place, type, maximum;
            words >> name >> place >> type >> maximum;
            const FakeSysfs::Path connector = resolved(system[place]);
            system.addBacklight(connector.empty() ? system.root() / "devices" / place : connector, name, type,
                                maximum);
        }
        DisplaySnapshot snapshot(system.paths());
        snapshot.take();
        std::string chosen;
        for (const Connector& each : snapshot.connectors()) {
            const auto backlight = chooseBacklight(each, snapshot.connectors(), snapshot.backlights());
            chosen += (chosen.empty() ? "" : " ") + (backlight ? backlight->name : "-");
        }
        EXPECT_EQ(chosen, row.chosen) << row.devices;
    }
}

TEST(Backlight, TheLowestLevelStaysVisibleAndTheScaleIsUsedWhole)
{
    for (const std::int64_t maximum : {2, 3, 15, 99, 100, 255, 1515, 65535}) {
        Backlight backlight;
        backlight.maximum = maximum;
        EXPECT_GE(backlight.rawValue(0.0), 1) << maximum;
        EXPECT_LE(backlight.rawValue(0.0), std::max<std::int64_t>(1, maximum / 100)) << maximum;
        EXPECT_EQ(backlight.rawValue(1.0), maximum);
        EXPECT_EQ(backlight.level(maximum), 1.0);
        EXPECT_EQ(backlight.level(0), 0.0);
        for (std::int64_t raw = backlight.minimum(); raw <= std::min<std::int64_t>(maximum, 2000); ++raw)
            ASSERT_EQ(backlight.rawValue(backlight.level(raw)), raw) << maximum;
    }
    EXPECT_EQ(Backlight{}.rawValue(0.0), 0) << "a device that only knows on and off";
}

struct LinuxBrightnessTest : testing::Test {
    LinuxBrightnessTest() { snapshot->take(); }

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
        return makeLinuxBrightness(snapshot, {intoFile, throughService}, {});
    }
    float read(const NativeFunctions& native)
    {
        float level = -1.0F;
        EXPECT_EQ(native.getter(panelID, &level), 0);
        return level;
    }

    FakeSysfs system{"i915 eDP-1=P DP-1=S"};
    FakeSysfs::Path file = system.addBacklight(resolved(system["eDP-1"]), "intel_backlight", "raw", "1515");
    std::shared_ptr<DisplaySnapshot> snapshot = std::make_shared<DisplaySnapshot>(system.paths());
    std::vector<std::string> asked;
    const std::uint32_t panelID = displayNumber("card0", "eDP-1");
};

TEST_F(LinuxBrightnessTest, ALevelThatWasSetReadsBackExactlyWhileThePanelHoldsIt)
{
    const NativeFunctions native = functions();
    EXPECT_FLOAT_EQ(read(native), 35.0F / 1500.0F);
    EXPECT_EQ(native.setter(panelID, 0.33333F), 0);
    EXPECT_EQ(readNumber(file), 515);
    EXPECT_EQ(read(native), 0.33333F);
    FakeSysfs::write(file, "516"); // a brightness key
    EXPECT_FLOAT_EQ(read(native), 501.0F / 1500.0F);
}

TEST_F(LinuxBrightnessTest, WhatCannotBeDoneIsSaidAndOnlyAMissingRightIsAReasonToAskTheService)
{
    float level = 0.0F;
    const std::uint32_t external = displayNumber("card0", "DP-1");
    EXPECT_EQ(functions().getter(external, &level), ENODEV);
    EXPECT_EQ(functions().setter(external, 0.5F), ENODEV);
    EXPECT_EQ(functions().setter(panelID, std::nanf("")), EINVAL);
    EXPECT_EQ(functions(EIO).setter(panelID, 0.25F), EIO);
    EXPECT_TRUE(asked.empty());
    for (const int forbidden : {EACCES, EPERM, EROFS}) {
        const NativeFunctions native = functions(forbidden);
        EXPECT_EQ(native.setter(panelID, 0.5F), 0);
        EXPECT_EQ(std::exchange(asked, {}), std::vector<std::string>{"intel_backlight 765"});
        EXPECT_EQ(read(native), 0.5F);
    }
    EXPECT_EQ(functions(EACCES, ETIMEDOUT).setter(panelID, 0.6F), ETIMEDOUT);
    FakeSysfs::write(file, "bright");
    EXPECT_EQ(functions().getter(panelID, &level), EIO);
}

} // namespace
} // namespace lumenvale
