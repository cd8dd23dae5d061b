// SPDX-License-Identifier: MIT
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "hardware/MatchScore.h"
#include "hardware/ServiceDiscovery.h"
#include "platform/linux/displays/LinuxDisplaySystem.h"
#include "platform/linux/displays/LinuxServiceRegistry.h"

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

TEST(LinuxServiceRegistry, EveryFactOfADisplayFitsItsFramebuffer)
{
    FakeSysfs system;
    system.addConnector(system.addCard(), "DP-1", EdidBuilder{.serial = 7, .serialText = "QX7"}.build());
    LinuxServiceRegistry registry(system.paths(), std::make_shared<FakeI2cDriver>(), [](auto) {}, {});
    LinuxDisplaySystem displays(system.paths());
    const IOregService candidate = enumerateServices(registry).at(0);
    const auto dictionary = displays.informationDictionary(displayNumber("card0", "DP-1"));
    EXPECT_EQ(matchScore(matchFacts(dictionary.value()), candidate), 16);
    EXPECT_EQ(candidate.edidUUID, "31B60127-0000-0000-0C1F-0104B53C2278");
    EXPECT_EQ(candidate.alphanumericSerialNumber, "QX7");
    EXPECT_EQ(*find(*candidate.displayAttributes, "NativeFormatHorizontalPixels"), 2560);
    EXPECT_EQ(*find(*candidate.displayAttributes, "NativeFormatVerticalPixels"), 1440);
    EXPECT_EQ(candidate.transportUpstream, "DisplayPort");
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
