// SPDX-License-Identifier: MIT
// Machines of every driver family, as their kernels record them, and the bus that each monitor is reached by.
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "platform/linux/displays/BusSelection.h"
#include "platform/linux/displays/LinuxRoutes.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

constexpr struct {
    const char* name;
    const char* machine;
    const char* channels; ///< the bus of each display
    const char* asked;    ///< the buses that anything is sent to, in order
} machines[] = {
    {"the link of HDMI, the child of DisplayPort, never the panel's",
     "i915 eDP-1=P/3 HDMI-A-1=S>1 DP-1=O/4; 0 S SMBus I801 adapter; 1 S i915 gmbus dpb; 2 - i915 gmbus dpc;"
     "3 P AUX A/DDI A/PHY A; 4 O AUX B/DDI B/PHY B",
     "DP-1:4 HDMI-A-1:1 eDP-1:-", "4 1"},
    {"a link that names a dead bus is tried last",
     "amdgpu DP-1=S/6>5; 5 - AMDGPU DM i2c hw bus 2; 6 S AMDGPU DM aux hw bus 2; 7 S AMDGPU SMU 0", "DP-1:6", "6"},
    {"a passive adapter: the pins answer",
     "amdgpu DP-1=S/6>5; 5 S AMDGPU DM i2c hw bus 2; 6 - AMDGPU DM aux hw bus 2", "DP-1:5", "6 5"},
    {"only power parts answer",
     "amdgpu DP-1=S/6; 6 - AMDGPU DM aux hw bus 2; 7 S AMDGPU SMU 0; 8 S AMDGPU DM i2c OEM bus", "DP-1:-", "6"},
    {"without links the EDID decides",
     "nvidia DP-1=S HDMI-A-1=O; 1 O NVIDIA i2c adapter 1 at 1:00.0; 2 - NVIDIA i2c adapter 2; 3 S NVIDIA i2c "
     "adapter 3",
     "DP-1:3 HDMI-A-1:1", "1 2 3"},
    {"two ways to one specimen", "nvidia DP-1=S; 3 S NVIDIA i2c adapter 3; 4 S NVIDIA i2c adapter 4", "DP-1:3",
     "3"},
    {"two ways to a picture that names no specimen",
     "nvidia DP-1=T; 3 T NVIDIA i2c adapter 3; 4 T NVIDIA i2c adapter 4", "DP-1:-", "3 4"},
    {"without links the one at the socket's place is asked first",
     "nvidia DP-1=S DP-2=O; 1 S NVIDIA i2c adapter 1; 2 O NVIDIA i2c adapter 2; 3 - NVIDIA i2c adapter 3",
     "DP-1:1 DP-2:2", "1 2"},
    {"other names", "nouveau DP-1=S HDMI-A-1=O; 1 O nvkm-1-bus-1; 2 - nvkm-1-aux-a; 3 S sor-6-0f42",
     "DP-1:3 HDMI-A-1:1", "2 3 1"},
    {"near a panel of unknown channel",
     "nouveau DP-1=S HDMI-A-1=O eDP-1=P; 1 O nvkm-1-bus-1; 2 - nvkm-1-aux-a; 3 S sor-6-0f42",
     "DP-1:- HDMI-A-1:1 eDP-1:-", "1"},
    {"near an LVDS panel it is the pins", "nouveau DP-1=S HDMI-A-1=O LVDS-1=P; 1 O nvkm-1-bus-1; 3 S sor-6-0f42",
     "DP-1:3 HDMI-A-1:- LVDS-1:-", "3"},
    {"behind a hub, whose own connector is not theirs",
     "i915 DP-1/4 DP-3=S DP-4=O; 4 S AUX B/DDI B/PHY B; 9 S DPMST; 10 O DPMST", "DP-3:9 DP-4:10", "9 10"},
    {"twins without links: nothing to learn, so nothing is asked",
     "amdgpu HDMI-A-1=T HDMI-A-2=T; 1 T AMDGPU DM i2c hw bus 0; 2 T AMDGPU DM i2c hw bus 1",
     "HDMI-A-1:- HDMI-A-2:-", ""},
    {"twins with links",
     "amdgpu HDMI-A-1=T>2 HDMI-A-2=T>1; 1 T AMDGPU DM i2c hw bus 0; 2 T AMDGPU DM i2c hw bus 1",
     "HDMI-A-1:2 HDMI-A-2:1", "2 1"},
    {"twins, one with a link", "amdgpu HDMI-A-1=T>2 HDMI-A-2=T; 1 T AMDGPU DM i2c hw bus 0; 2 T AMDGPU i2c 1",
     "HDMI-A-1:2 HDMI-A-2:-", "2"},
    {"twins on one pair of pins", "radeon DVI-I-1=T>1 HDMI-A-1=T>1; 1 T Radeon i2c bit bus 0x90",
     "DVI-I-1:- HDMI-A-1:-", ""},
    {"another card's buses are not asked",
     "nvidia DP-1=T; 1 T NVIDIA i2c adapter 1\nnvidia DP-2=T; 2 T NVIDIA i2c adapter 1", "DP-1:1 DP-2:2", "1 2"},
    {"no display controller, no display adapter, a panel's adapter",
     "i915@0x0c0500 HDMI-A-1=S>1; 1 S i915 gmbus dpb\n"
     "i915 DVI-D-1=O>2 LVDS-1=P>3; 2 O SMBus I801 adapter at efa0; 3 P i915 gmbus panel",
     "DVI-D-1:- HDMI-A-1:- LVDS-1:-", ""},
};

/// The buses that the driver was asked to open since the last call, each once.
std::string takeOpened(FakeI2cDriver& driver)
{
    std::string numbers;
    for (const std::string& line : std::exchange(driver.log, {})) {
        if (line.starts_with("open ") && (numbers + ' ').find(line.substr(4) + ' ') == std::string::npos)
            numbers += line.substr(4);
    }
    return numbers.empty() ? "" : numbers.substr(1);
}

struct RoutesOf {
    explicit RoutesOf(const FakeSysfs& system) : system(system) { driver->monitors = system.answers; }

    /// The routes of all connectors that show a picture, by their names.
    std::map<std::string, Route> find()
    {
        std::vector<DisplayInfo> displays;
        for (const Connector& each : readConnectors(system.paths()))
            displays.push_back({.id = each.name, .displayID = each.displayID});
        const std::vector<Route> found = routes.find(displays, holdPatience);
        std::map<std::string, Route> result;
        for (std::size_t i = 0; i < displays.size(); ++i)
            result[displays[i].id] = found.at(i);
        return result;
    }

    const FakeSysfs& system;
    std::shared_ptr<FakeI2cDriver> driver = std::make_shared<FakeI2cDriver>();
    std::shared_ptr<DisplayTroubles> troubles = std::make_shared<DisplayTroubles>();
    LinuxRoutes routes{
        std::make_shared<DisplaySnapshot>(system.records()), driver, {[](auto) {}, {}, {}}, troubles, {}};
};

TEST(LinuxRoutes, EachMonitorIsReachedByTheBusThatIsProvenToBeItsOwn)
{
    const FakeSysfs disturbed("nvidia DP-1=S; 1 S NVIDIA i2c adapter 1");
    RoutesOf disturbedRoutes(disturbed);
    disturbedRoutes.driver->damagedReads = 2;
    EXPECT_TRUE(disturbedRoutes.find().at("DP-1").service);
    for (const auto& machine : machines) {
        const FakeSysfs system(machine.machine);
        RoutesOf routes(system);
        const std::map<std::string, Route> found = routes.find();
        const auto reads = std::ranges::count(routes.driver->log, "W50 00");
        const std::string asked = takeOpened(*routes.driver);
        EXPECT_EQ(asked, machine.asked) << machine.name;
        EXPECT_EQ(reads, asked.empty() ? 0 : std::ranges::count(asked, ' ') + 1) << "each bus once";
        std::string channels;
        for (const auto& [connector, route] : found) {
            const std::uint8_t byte[] = {0x82};
            const bool isOpen = route.service && route.service->writeI2C(0x37, 0x51, byte) == 0;
            const std::string bus = takeOpened(*routes.driver);
            if (!route.upstream.empty())
                channels += (channels.empty() ? "" : " ") + connector + ":" + (isOpen ? bus : "-");
        }
        EXPECT_EQ(channels, machine.channels) << machine.name;
    }
}

TEST(LinuxRoutes, ABusThatAnotherProgramHoldsIsAskedLast)
{
    const FakeSysfs system("nvidia DP-1=S; 3 O NVIDIA i2c adapter 3; 4 S NVIDIA i2c adapter 4");
    RoutesOf routes(system);
    routes.driver->busyLocks = 1;
    EXPECT_TRUE(routes.find().at("DP-1").service);
    EXPECT_EQ(std::ranges::count(routes.driver->log, "W50 00"), 1) << "nothing was sent to the other";
}

TEST(LinuxRoutes, EachMonitorThatABusyBusMayLeadToIsSaidToBeBusy)
{
    const FakeSysfs system("nvidia DP-1=S DP-2=O; 3 S NVIDIA i2c adapter 3");
    RoutesOf routes(system);
    routes.driver->busyLocks = 100000;
    EXPECT_FALSE(routes.find().at("DP-2").service);
    for (const char* each : {"DP-1", "DP-2"})
        EXPECT_EQ(routes.troubles->of(displayNumber("card0", each)).value().kind, DisplayTrouble::Kind::busy)
            << each;
}

TEST(LinuxRoutes, TheRecordsOfARoundDecideWhichDisplayItIs)
{
    FakeSysfs system("i915 DP-1=S eDP-1=P");
    RoutesOf of(system);
    const std::uint32_t number = displayNumber("card0", "DP-1");
    EXPECT_FALSE(of.routes.identifier(number)) << "no round has begun";
    const Route route = of.find().at("DP-1");
    EXPECT_EQ(route.upstream, "DisplayPort");
    EXPECT_EQ(route.serialNumber, "QX7");
    EXPECT_EQ(route.nativeFormat, (PixelSize{2560, 1440}));
    const auto before = of.routes.identifier(number);
    EXPECT_TRUE(before);
    system.plug(system["DP-1"], edidOf('O'));
    EXPECT_EQ(of.routes.identifier(number), before);
    of.routes.beginRound();
    EXPECT_TRUE(of.routes.identifier(number));
    EXPECT_NE(of.routes.identifier(number), before);
    system.write(system["DP-1"] / "status", "disconnected");
    of.routes.beginRound();
    EXPECT_FALSE(of.routes.identifier(number));
    EXPECT_EQ(of.find().at("DP-1").upstream, "");
}

TEST(LinuxRoutes, TheConnectionIsWhatPeopleSeeAndWhatTheMonitorSpeaksWhereThatDiffers)
{
    const struct {
        const char* socket;
        std::uint8_t revision, videoInput;
        const char *upstream, *downstream;
    } rows[] = {{"DP-1", 4, 0xB5, "DisplayPort", ""},
                {"DP-1", 4, 0xB2, "DisplayPort", "HDMI"},
                {"DP-1", 3, 0x82, "DisplayPort", ""},
                {"DP-1", 4, 0x8F, "DisplayPort", ""},
                {"DP-2", 4, 0xB5, "USB-C", "DisplayPort"},
                {"HDMI-A-1", 4, 0xB2, "HDMI", ""},
                {"DVI-D-1", 4, 0x81, "DVI", ""},
                {"VGA-1", 3, 0x08, "VGA", ""},
                {"eDP-1", 4, 0xB2, "Embedded DisplayPort", ""}};
    for (const auto& row : rows) {
        FakeSysfs system(std::string("i915 ") + row.socket + "=S");
        system.plug(system[row.socket],
                    EdidBuilder{.revision = row.revision, .videoInput = row.videoInput}.build());
        if (row.upstream == std::string("USB-C"))
            system.write(system[row.socket] / "typec_connector/uevent", "");
        const Route route = RoutesOf(system).find().at(row.socket);
        EXPECT_EQ(route.upstream, row.upstream);
        EXPECT_EQ(route.downstream, row.downstream);
    }
}

TEST(AdapterNames, OnlyChannelsOfExternalMonitorsAreAllowed)
{
    const std::string allowed = "i915 gmbus dpb|i915 gmbus tc1|i915 gmbus vga|i915 gmbus misc|AUX C/DDI C/PHY C|"
                                "AMDGPU DM i2c hw bus 0|AMDGPU DM aux hw bus 1|AMDGPU i2c bit bus 0x90|DPMST|"
                                "Radeon i2c bit bus 0x91|Radeon aux bus DP-auxch|nvkm-0000:01:00.0-bus-0000|"
                                "nvkm-0000:01:00.0-aux-000c|sor-0006-0f42|NVIDIA i2c adapter 5 at 1:00.0";
    const std::string others = "|SMBus I801 adapter at efa0|SMBus PIIX4 adapter port 0 at 0b00|AMDGPU SMU 0|"
                               "AMDGPU DM i2c OEM bus|NVIDIA GPU I2C adapter|Synopsys DesignWare I2C adapter|"
                               "i915 gmbus panel|i915 gmbus ssc|nvkm-other";
    for (const std::string& list : {allowed, others}) {
        std::istringstream names(list);
        for (std::string name; std::getline(names, name, '|');)
            EXPECT_EQ(isDisplayAdapterName(name), list == allowed) << name;
    }
}

} // namespace
} // namespace lumenvale
