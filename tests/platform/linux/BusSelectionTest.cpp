// SPDX-License-Identifier: MIT
// Machines of every driver family, as their kernels record them.
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "platform/linux/displays/LinuxServiceRegistry.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

const EdidBlock studio = EdidBuilder{.serial = 1}.build();
const EdidBlock office = EdidBuilder{.manufacturer = "OFC", .serial = 2, .name = "Office 24"}.build();
const EdidBlock panel = EdidBuilder{.manufacturer = "PNL", .name = "B140"}.build();
const EdidBlock twin = EdidBuilder{.name = "Twin"}.build();

class BusSelection : public testing::Test {
protected:
    FakeSysfs system;
    std::shared_ptr<FakeI2cDriver> driver = std::make_shared<FakeI2cDriver>();

    /// Walks the registry, opening every channel, and sends a byte to the one after this connector's framebuffer;
    /// returns the number of the bus that it went to, or -1. What a walk opens is in the driver's log.
    int busOf(const std::string& connector)
    {
        LinuxServiceRegistry registry(system.paths(), driver, [](auto) {}, {});
        std::shared_ptr<AVService> service;
        std::string current;
        registry.forEachEntry([&](const RegistryEntry& entry) {
            if (entry.name() == "IOMobileFramebufferShim")
                current = entry.path();
            else if (entry.property("Location") == PropertyValue("External")) {
                const std::shared_ptr<AVService> opened = entry.createAVService();
                if (current.ends_with("-" + connector))
                    service = opened;
            }
        });
        if (!service)
            return -1;
        std::vector<std::string> before;
        before.swap(driver->log);
        const std::uint8_t byte[] = {0x82};
        EXPECT_EQ(service->writeI2C(0x37, 0x51, byte), 0);
        const int number = driver->opened().at(0);
        driver->log = before;
        return number;
    }
};

TEST_F(BusSelection, Intel61UsesTheLinkOfHdmiAndTheChildOfDisplayPort)
{
    const auto device = system.addCard("card0", "i915");
    const auto edp = system.addConnector(device, "eDP-1", panel);
    const auto hdmi = system.addConnector(device, "HDMI-A-1", studio);
    const auto dp = system.addConnector(device, "DP-1", office);
    system.addAdapter(device, 0, "SMBus I801 adapter at efa0");
    const auto pins = system.addAdapter(device, 1, "i915 gmbus dpb");
    system.addAdapter(device, 2, "i915 gmbus dpc");
    system.addAdapter(edp, 3, "AUX A/DDI A/PHY A");
    system.addAdapter(dp, 4, "AUX B/DDI B/PHY B");
    system.linkDdc(hdmi, pins);
    FakeSysfs::link(pins, hdmi / "i2c-1");
    driver->monitors = {{0, studio}, {1, studio}, {3, panel}, {4, office}};
    EXPECT_EQ(busOf("HDMI-A-1"), 1);
    EXPECT_EQ(busOf("DP-1"), 4);
    EXPECT_EQ(driver->opened(), (std::vector<int>{4, 1}));
}

TEST_F(BusSelection, AmdLinksOfDisplayPortNameADeadBusAndAreTriedLast)
{
    const auto device = system.addCard("card0", "amdgpu", "0000:03:00.0", "0x038000");
    const auto dp = system.addConnector(device, "DP-1", studio);
    system.linkDdc(dp, system.addAdapter(device, 5, "AMDGPU DM i2c hw bus 2"));
    system.addAdapter(dp, 6, "AMDGPU DM aux hw bus 2");
    system.addAdapter(device, 7, "AMDGPU SMU 0");
    system.addAdapter(device, 8, "AMDGPU DM i2c OEM bus");
    driver->monitors = {{6, studio}, {7, studio}, {8, studio}};
    EXPECT_EQ(busOf("DP-1"), 6);
    EXPECT_EQ(driver->opened(), std::vector<int>{6});
    driver->monitors = {{5, studio}, {7, studio}, {8, studio}}; // a passive adapter: the pins answer
    EXPECT_EQ(busOf("DP-1"), 5);
    driver->monitors = {{7, studio}, {8, studio}};
    EXPECT_EQ(busOf("DP-1"), -1);
    EXPECT_EQ(driver->opened(), (std::vector<int>{6, 5}));
}

TEST_F(BusSelection, WithoutLinksTheEdidDecides)
{
    const auto device = system.addCard("card0", "nvidia", "0000:01:00.0");
    system.addConnector(device, "DP-1", studio);
    system.addConnector(device, "HDMI-A-1", office);
    system.addAdapter(device, 1, "NVIDIA i2c adapter 1 at 1:00.0\n");
    system.addAdapter(device, 2, "NVIDIA i2c adapter 2 at 1:00.0\n");
    system.addAdapter(device, 3, "NVIDIA i2c adapter 3 at 1:00.0\n");
    const auto typeC = system.addPciDevice("0000:01:00.3", "nvidia-gpu", "0x0c8000");
    system.addAdapter(typeC, 4, "NVIDIA i2c adapter 4 at 1:00.3");
    driver->monitors = {{1, office}, {3, studio}, {4, studio}};
    EXPECT_EQ(busOf("DP-1"), 3);
    EXPECT_EQ(busOf("HDMI-A-1"), 1);
    EXPECT_EQ(driver->opened(), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(std::count(driver->log.begin(), driver->log.end(), "W50 00"), 6) << "one EDID per bus and walk";
    driver->monitors[2] = studio;
    EXPECT_EQ(busOf("DP-1"), -1) << "two ways to the same picture";
}

TEST_F(BusSelection, NouveauChannelsAreFoundByTheEdidButNotNearAPanelOfUnknownChannel)
{
    const auto device = system.addCard("card0", "nouveau", "0000:01:00.0");
    system.addConnector(device, "DP-1", studio);
    system.addConnector(device, "HDMI-A-1", office);
    system.addAdapter(device, 1, "nvkm-0000:01:00.0-bus-0001");
    system.addAdapter(device, 2, "nvkm-0000:01:00.0-aux-000a");
    system.addAdapter(device, 3, "sor-0006-0f42");
    driver->monitors = {{1, office}, {3, studio}};
    EXPECT_EQ(busOf("DP-1"), 3);
    EXPECT_EQ(busOf("HDMI-A-1"), 1);

    system.addConnector(device, "eDP-1", panel);
    driver->log.clear();
    EXPECT_EQ(busOf("DP-1"), -1);
    EXPECT_EQ(busOf("HDMI-A-1"), 1);
    EXPECT_EQ(driver->opened(), std::vector<int>{1});
}

TEST_F(BusSelection, AMonitorBehindAHubIsFoundByItsEdidAndNotThroughTheHubsOwnConnector)
{
    const auto device = system.addCard("card0", "i915");
    const auto root = system.addConnector(device, "DP-1"); // the hub: nothing connected to it directly
    system.addAdapter(root, 4, "AUX B/DDI B/PHY B");
    system.addConnector(device, "DP-3", studio);
    system.addConnector(device, "DP-4", office);
    system.addAdapter(device, 9, "DPMST");
    system.addAdapter(device, 10, "DPMST");
    driver->monitors = {{4, studio}, {9, studio}, {10, office}};
    EXPECT_EQ(busOf("DP-3"), 9);
    EXPECT_EQ(busOf("DP-4"), 10);
    EXPECT_EQ(driver->opened(), (std::vector<int>{9, 10}));
}

TEST_F(BusSelection, TwinsAreServedOnlyByTheirDriversLinks)
{
    const auto device = system.addCard("card0", "amdgpu");
    const auto first = system.addConnector(device, "HDMI-A-1", twin);
    const auto second = system.addConnector(device, "HDMI-A-2", twin);
    const auto one = system.addAdapter(device, 1, "AMDGPU DM i2c hw bus 0");
    const auto two = system.addAdapter(device, 2, "AMDGPU DM i2c hw bus 1");
    driver->monitors = {{1, twin}, {2, twin}};
    EXPECT_EQ(busOf("HDMI-A-1"), -1);
    EXPECT_EQ(busOf("HDMI-A-2"), -1);
    EXPECT_TRUE(driver->log.empty()) << "nothing to learn, so nothing is asked";

    system.linkDdc(first, two);
    EXPECT_EQ(busOf("HDMI-A-1"), 2);
    EXPECT_EQ(busOf("HDMI-A-2"), -1);
    system.linkDdc(second, one);
    EXPECT_EQ(busOf("HDMI-A-1"), 2);
    EXPECT_EQ(busOf("HDMI-A-2"), 1);
}

TEST_F(BusSelection, TwinsOnOnePairOfPinsGetNoService)
{
    const auto device = system.addCard("card0", "radeon");
    const auto pins = system.addAdapter(device, 1, "Radeon i2c bit bus 0x90");
    system.linkDdc(system.addConnector(device, "DVI-I-1", twin), pins);
    const auto second = system.addConnector(device, "HDMI-A-1", twin);
    system.linkDdc(second, pins);
    system.write(second / "enabled", "disabled"); // switched off in the settings: it counts all the same
    driver->monitors = {{1, twin}};
    EXPECT_EQ(busOf("DVI-I-1"), -1);
}

TEST_F(BusSelection, AnotherCardsBusesAreNotAsked)
{
    const auto first = system.addCard("card0", "nvidia", "0000:01:00.0");
    const auto second = system.addCard("card1", "nvidia", "0000:02:00.0");
    system.addConnector(first, "DP-1", twin);
    system.addConnector(second, "DP-2", twin, "card1");
    system.addAdapter(first, 1, "NVIDIA i2c adapter 1 at 1:00.0");
    system.addAdapter(second, 2, "NVIDIA i2c adapter 1 at 2:00.0");
    driver->monitors = {{1, twin}, {2, twin}};
    EXPECT_EQ(busOf("DP-1"), 1);
    EXPECT_EQ(busOf("DP-2"), 2);
}

TEST_F(BusSelection, NothingIsSentWithoutAProperDisplayAdapter)
{
    const auto device = system.addCard("card0", "i915", "0000:00:02.0", "0x0c0500"); // not a display controller
    const auto hdmi = system.addConnector(device, "HDMI-A-1", studio);
    system.linkDdc(hdmi, system.addAdapter(device, 1, "i915 gmbus dpb"));
    const auto good = system.addCard("card1", "i915", "0000:00:03.0");
    const auto dvi = system.addConnector(good, "DVI-D-1", studio, "card1");
    system.linkDdc(dvi, system.addAdapter(good, 2, "SMBus I801 adapter at efa0"));
    const auto lvds = system.addConnector(good, "LVDS-1", panel, "card1");
    system.linkDdc(lvds, system.addAdapter(good, 3, "i915 gmbus panel"));
    driver->monitors = {{1, studio}, {2, studio}, {3, panel}};
    for (const char* each : {"HDMI-A-1", "DVI-D-1", "LVDS-1"})
        EXPECT_EQ(busOf(each), -1) << each;
    EXPECT_TRUE(driver->log.empty());
}

TEST(AdapterNames, OnlyChannelsOfExternalMonitorsAreAllowed)
{
    for (const char* name :
         {"i915 gmbus dpb", "i915 gmbus tc1", "AUX C/DDI C/PHY C", "AMDGPU DM i2c hw bus 0",
          "AMDGPU DM aux hw bus 1", "Radeon i2c bit bus 0x91", "nvkm-0000:01:00.0-bus-0000",
          "nvkm-0000:01:00.0-aux-000c", "sor-0006-0f42", "NVIDIA i2c adapter 5 at 1:00.0", "DPMST"})
        EXPECT_TRUE(isDisplayAdapterName(name)) << name;
    for (const char* name :
         {"", "SMBus I801 adapter at efa0", "SMBus PIIX4 adapter port 0 at 0b00", "AMDGPU SMU 0",
          "AMDGPU DM i2c OEM bus", "NVIDIA GPU I2C adapter", "Synopsys DesignWare I2C adapter", "i915 gmbus panel",
          "i915 gmbus ssc", "nvkm-other"})
        EXPECT_FALSE(isDisplayAdapterName(name)) << name;
}

} // namespace
} // namespace lumenvale
