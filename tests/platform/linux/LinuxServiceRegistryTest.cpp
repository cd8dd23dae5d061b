// SPDX-License-Identifier: MIT
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "platform/linux/LinuxServiceRegistry.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(LinuxServiceRegistry, EachDisplayIsAFramebufferFollowedByItsChannel)
{
    FakeSysfs system;
    const auto device = system.addCard();
    system.addConnector(device, "DP-1", EdidBuilder{.serial = 7, .serialText = "QX7"}.build());
    system.addConnector(device, "DP-2");
    system.addConnector(device, "eDP-1", EdidBuilder{.name = ""}.build());
    system.addConnector(device, "Virtual-1", EdidBlock{}); // connected, without a valid EDID
    LinuxServiceRegistry registry(system.paths(), std::make_shared<FakeI2cDriver>(), [](auto) {}, {});

    std::vector<std::string> entries;
    registry.forEachEntry([&](const RegistryEntry& entry) {
        entries.push_back(entry.name() + " " +
                          FakeSysfs::Path(entry.path()).lexically_relative(system.root()).string());
        if (const auto location = entry.property("Location")) {
            entries.back() += " " + *location->as<std::string>();
            EXPECT_EQ(entry.createAVService(), nullptr) << "no bus answers here";
        }
    });
    EXPECT_EQ(entries, (std::vector<std::string>{
                           "IOMobileFramebufferShim class/drm/card0-eDP-1",
                           "DCPAVServiceProxy class/drm/card0-eDP-1/ddc Embedded",
                           "IOMobileFramebufferShim class/drm/card0-DP-1",
                           "DCPAVServiceProxy class/drm/card0-DP-1/ddc External",
                           "IOMobileFramebufferShim class/drm/card0-Virtual-1",
                           "DCPAVServiceProxy class/drm/card0-Virtual-1/ddc External",
                       }));
}

TEST(LinuxServiceRegistry, AFramebufferCarriesWhatTheMonitorSaysOfItself)
{
    FakeSysfs system;
    system.addConnector(system.addCard(), "DP-1", EdidBuilder{.serial = 7, .serialText = "QX7"}.build());
    LinuxServiceRegistry registry(system.paths(), std::make_shared<FakeI2cDriver>(), [](auto) {}, {});
    int framebuffers = 0;
    registry.forEachEntry([&](const RegistryEntry& entry) {
        if (entry.name() != "IOMobileFramebufferShim")
            return;
        ++framebuffers;
        EXPECT_EQ(entry.property("EDID UUID"), PropertyValue("31B60127-0000-0000-0C1F-0104B53C2278"));
        const PropertyDictionary product = {{"ManufacturerID", "LMV"},
                                            {"ProductName", "Studio 27"},
                                            {"SerialNumber", 7},
                                            {"AlphanumericSerialNumber", "QX7"}};
        EXPECT_EQ(entry.property("DisplayAttributes"),
                  PropertyValue(PropertyDictionary{{"ProductAttributes", product},
                                                   {"NativeFormatHorizontalPixels", 2560},
                                                   {"NativeFormatVerticalPixels", 1440}}));
        EXPECT_EQ(entry.property("Transport"),
                  PropertyValue(PropertyDictionary{{"Upstream", "DisplayPort"}, {"Downstream", ""}}));
        EXPECT_FALSE(entry.property("Location"));
    });
    EXPECT_EQ(framebuffers, 1);
}

TEST(Transport, SaysWhatPeopleSeeAndWhatTheMonitorSpeaksWhereThatDiffers)
{
    Connector connector;
    connector.kind = ConnectorKind::external;
    connector.type = "DP";
    const auto speaks = [&](int revision, int videoInput) {
        const EdidBlock block = EdidBuilder{.revision = revision, .videoInput = videoInput}.build();
        connector.edid = parseEdid(block);
        return transportOf(connector);
    };
    EXPECT_EQ(speaks(4, 0xB5), (Transport{"DisplayPort", ""}));
    EXPECT_EQ(speaks(4, 0xB2), (Transport{"DisplayPort", "HDMI"}));
    EXPECT_EQ(speaks(3, 0x82), (Transport{"DisplayPort", ""})) << "not told before revision 4";
    EXPECT_EQ(speaks(4, 0x8F), (Transport{"DisplayPort", ""}));
    connector.isTypeC = true;
    EXPECT_EQ(speaks(4, 0xB5), (Transport{"USB-C", "DisplayPort"}));
    connector.isTypeC = false;
    connector.type = "HDMI-A";
    EXPECT_EQ(speaks(4, 0xB2), (Transport{"HDMI", ""}));
    connector.type = "VGA";
    EXPECT_EQ(speaks(3, 0x08), (Transport{"VGA", ""}));
}

} // namespace
} // namespace lumenvale
