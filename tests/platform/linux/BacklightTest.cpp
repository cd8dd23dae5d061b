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
        DisplaySnapshot snapshot(system.records());
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

TEST(LinuxBrightness, ReadsWhatTheDeviceHoldsAndAsksTheServiceOnlyForAMissingRight)
{
    FakeSysfs system("i915 eDP-1=P DP-1=S");
    const auto file = system.addBacklight(resolved(system["eDP-1"]), "intel_backlight", "raw", "1515");
    const auto snapshot = std::make_shared<DisplaySnapshot>(system.records());
    snapshot->take();
    int fileError = 0; // 0: the file takes values
    int serviceError = 0;
    std::vector<std::string> asked;
    const auto intoFile = [&](const FakeSysfs::Path& path, std::int64_t raw) {
        return fileError != 0 ? fileError : writeNumber(path, raw);
    };
    const auto throughService = [&](const std::string& name, std::int64_t raw) {
        asked.push_back(name + " " + std::to_string(raw));
        return serviceError != 0 ? serviceError : writeNumber(file, raw);
    };
    const NativeFunctions native =
        makeLinuxBrightness(snapshot, {intoFile, throughService}, std::make_shared<DisplayTroubles>(), {});
    const std::uint32_t panel = displayNumber("card0", "eDP-1");
    const std::uint32_t external = displayNumber("card0", "DP-1");
    float level = -1.0F;
    const auto read = [&] { return native.getter(panel, &level) == 0 ? level : -1.0F; };

    EXPECT_FLOAT_EQ(read(), 35.0F / 1500.0F);
    EXPECT_EQ(native.setter(panel, 0.33333F), 0);
    EXPECT_EQ(readNumber(file), 515);
    EXPECT_FLOAT_EQ(read(), 500.0F / 1500.0F);
    EXPECT_EQ(native.levels(panel), (LevelRange{15, 1515}));
    const Hold hold = native.tryHold(panel);
    EXPECT_TRUE(hold && !native.tryHold(panel)) << "another copy of the program waits";
    EXPECT_TRUE(!native.levels(external) && native.tryHold(external));
    FakeSysfs::write(file, "516"); // a brightness key
    EXPECT_FLOAT_EQ(read(), 501.0F / 1500.0F);
    EXPECT_EQ(native.getter(external, &level), ENODEV);
    EXPECT_EQ(native.setter(external, 0.5F), ENODEV);
    EXPECT_EQ(native.setter(panel, std::nanf("")), EINVAL);
    fileError = EIO;
    EXPECT_EQ(native.setter(panel, 0.25F), EIO);
    EXPECT_TRUE(asked.empty());
    for (const int forbidden : {EACCES, EPERM, EROFS}) {
        fileError = forbidden;
        EXPECT_EQ(native.setter(panel, 0.5F), 0);
        EXPECT_EQ(std::exchange(asked, {}), std::vector<std::string>{"intel_backlight 765"});
        EXPECT_EQ(read(), 0.5F);
    }
    serviceError = ETIMEDOUT;
    EXPECT_EQ(native.setter(panel, 0.6F), ETIMEDOUT);
    FakeSysfs::write(file, "bright");
    EXPECT_EQ(native.getter(panel, &level), EIO);
}

} // namespace
} // namespace lumenvale
