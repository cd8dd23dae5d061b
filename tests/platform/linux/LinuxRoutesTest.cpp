// SPDX-License-Identifier: MIT
// Machines of every driver family, as their kernels record them, and the bus that each monitor is reached by.
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "platform/linux/displays/BusSelection.h"
#include "platform/linux/displays/LinuxRoutes.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Numbers = std::vector<int>;

struct Machine {
    const char* name;
    std::vector<Card> cards;
    std::map<std::string, int> buses; ///< by connector; -1: no channel
    Numbers asked;                    ///< the buses that anything is sent to, in order
};

const Socket dpStudio{"DP-1", 'S'};
const Socket hdmiOffice{"HDMI-A-1", 'O'};
const Bus nvidia1{1, "NVIDIA i2c adapter 1 at 1:00.0\n", 'O'};
const Bus nvidia2{2, "NVIDIA i2c adapter 2 at 1:00.0\n"};
const Bus nvidia3{3, "NVIDIA i2c adapter 3 at 1:00.0\n", 'S'};
const Bus nouveau1{1, "nvkm-0000:01:00.0-bus-0001", 'O'};
const Bus nouveau2{2, "nvkm-0000:01:00.0-aux-000a"};
const Bus nouveau3{3, "sor-0006-0f42", 'S'};
const Bus aux{6, "AMDGPU DM aux hw bus 2", 'S'};
const Bus deadPins{5, "AMDGPU DM i2c hw bus 2"};
const Bus pins{5, "AMDGPU DM i2c hw bus 2", 'S'};
const Bus smu{7, "AMDGPU SMU 0", 'S'};
const Bus oem{8, "AMDGPU DM i2c OEM bus", 'S'};
const Bus twin1{1, "AMDGPU DM i2c hw bus 0", 'T'};
const Bus twin2{2, "AMDGPU DM i2c hw bus 1", 'T'};
const Socket amdDp{"DP-1", 'S', 6, 5};

const std::vector<Machine> machines = {
    {"the link of HDMI, the child of DisplayPort, never the panel's",
     {{"i915",
       {{"eDP-1", 'P', 3}, {"HDMI-A-1", 'S', -1, 1}, {"DP-1", 'O', 4}},
       {{0, "SMBus I801 adapter at efa0", 'S'},
        {1, "i915 gmbus dpb", 'S'},
        {2, "i915 gmbus dpc"},
        {3, "AUX A/DDI A/PHY A", 'P'},
        {4, "AUX B/DDI B/PHY B", 'O'}}}},
     {{"DP-1", 4}, {"HDMI-A-1", 1}, {"eDP-1", -1}},
     {4, 1}},
    {"a link that names a dead bus is tried last",
     {{"amdgpu", {amdDp}, {deadPins, aux, smu, oem}}},
     {{"DP-1", 6}},
     {6}},
    {"a passive adapter", {{"amdgpu", {amdDp}, {pins, {6, aux.name}, smu}}}, {{"DP-1", 5}}, {6, 5}},
    {"only power parts answer",
     {{"amdgpu", {amdDp}, {deadPins, {6, aux.name}, smu, oem}}},
     {{"DP-1", -1}},
     {6, 5}},
    {"without links the EDID decides",
     {{"nvidia", {dpStudio, hdmiOffice}, {nvidia1, nvidia2, nvidia3}}},
     {{"DP-1", 3}, {"HDMI-A-1", 1}},
     {1, 2, 3}},
    {"two ways to the same picture",
     {{"nvidia", {dpStudio}, {nvidia3, {4, nvidia1.name, 'S'}}}},
     {{"DP-1", -1}},
     {3, 4}},
    {"names of another driver",
     {{"nouveau", {dpStudio, hdmiOffice}, {nouveau1, nouveau2, nouveau3}}},
     {{"DP-1", 3}, {"HDMI-A-1", 1}},
     {1, 2, 3}},
    {"near a panel of unknown channel",
     {{"nouveau", {dpStudio, hdmiOffice, {"eDP-1", 'P'}}, {nouveau1, nouveau2, nouveau3}}},
     {{"DP-1", -1}, {"HDMI-A-1", 1}},
     {1}},
    {"behind a hub, whose own connector is not theirs",
     {{"i915",
       {{"DP-1", ' ', 4}, {"DP-3", 'S'}, {"DP-4", 'O'}},
       {{4, "AUX B/DDI B/PHY B", 'S'}, {9, "DPMST", 'S'}, {10, "DPMST", 'O'}}}},
     {{"DP-3", 9}, {"DP-4", 10}},
     {9, 10}},
    {"twins without links: nothing to learn, so nothing is asked",
     {{"amdgpu", {{"HDMI-A-1", 'T'}, {"HDMI-A-2", 'T'}}, {twin1, twin2}}},
     {{"HDMI-A-1", -1}, {"HDMI-A-2", -1}},
     {}},
    {"twins with links",
     {{"amdgpu", {{"HDMI-A-1", 'T', -1, 2}, {"HDMI-A-2", 'T', -1, 1}}, {twin1, twin2}}},
     {{"HDMI-A-1", 2}, {"HDMI-A-2", 1}},
     {2, 1}},
    {"twins on one pair of pins",
     {{"radeon", {{"DVI-I-1", 'T', -1, 1}, {"HDMI-A-1", 'T', -1, 1}}, {{1, "Radeon i2c bit bus 0x90", 'T'}}}},
     {{"DVI-I-1", -1}, {"HDMI-A-1", -1}},
     {}},
    {"another card's buses are not asked",
     {{"nvidia", {{"DP-1", 'T'}}, {{1, nvidia1.name, 'T'}}},
      {"nvidia", {{"DP-2", 'T'}}, {{2, nvidia2.name, 'T'}}, "0x030200", "card1"}},
     {{"DP-1", 1}, {"DP-2", 2}},
     {1, 2}},
    {"no display controller, no display adapter, a panel's adapter",
     {{"i915", {{"HDMI-A-1", 'S', -1, 1}}, {{1, "i915 gmbus dpb", 'S'}}, "0x0c0500"},
      {"i915",
       {{"DVI-D-1", 'O', -1, 2}, {"LVDS-1", 'P', -1, 3}},
       {{2, "SMBus I801 adapter at efa0", 'O'}, {3, "i915 gmbus panel", 'P'}},
       "0x030000",
       "card1"}},
     {{"HDMI-A-1", -1}, {"DVI-D-1", -1}, {"LVDS-1", -1}},
     {}},
};

/// The buses that the driver was asked to open, each once.
Numbers takeOpened(FakeI2cDriver& driver)
{
    Numbers numbers;
    for (const std::string& line : std::exchange(driver.log, {})) {
        if (line.starts_with("open ") && std::ranges::find(numbers, std::stoi(line.substr(5))) == numbers.end())
            numbers.push_back(std::stoi(line.substr(5)));
    }
    return numbers;
}

struct RoutesOf {
    explicit RoutesOf(const FakeSysfs& system) : system(system) { driver->monitors = system.answers; }

    /// The routes of all connectors that show a picture, by their names.
    std::map<std::string, Route> find()
    {
        std::vector<DisplayInfo> displays;
        std::vector<std::string> names;
        for (const Connector& each : readConnectors(system.paths())) {
            names.push_back(each.name);
            displays.emplace_back().displayID = each.displayID;
        }
        const std::vector<Route> found = routes.find(displays);
        std::map<std::string, Route> result;
        for (std::size_t i = 0; i < names.size(); ++i)
            result[names[i]] = found.at(i);
        return result;
    }

    const FakeSysfs& system;
    std::shared_ptr<FakeI2cDriver> driver = std::make_shared<FakeI2cDriver>();
    LinuxRoutes routes{system.paths(), std::make_shared<DisplaySnapshot>(system.paths()), driver, [](auto) {}, {}};
};

TEST(LinuxRoutes, EachMonitorIsReachedByTheBusThatIsProvenToBeItsOwn)
{
    for (const Machine& machine : machines) {
        const FakeSysfs system(machine.cards);
        RoutesOf routes(system);
        const std::map<std::string, Route> found = routes.find();
        const auto& log = routes.driver->log;
        EXPECT_EQ(std::count(log.begin(), log.end(), "W50 00"), std::ssize(machine.asked)) << machine.name;
        EXPECT_EQ(takeOpened(*routes.driver), machine.asked) << machine.name;
        for (const auto& [connector, bus] : machine.buses) {
            const std::shared_ptr<AVService>& service = found.at(connector).service;
            const std::uint8_t byte[] = {0x82};
            EXPECT_EQ(service && service->writeI2C(0x37, 0x51, byte) == 0, bus != -1) << machine.name;
            EXPECT_EQ(takeOpened(*routes.driver), bus == -1 ? Numbers{} : Numbers{bus}) << machine.name;
        }
    }
}

TEST(LinuxRoutes, TheRecordsOfARoundDecideWhichDisplayItIs)
{
    FakeSysfs system({{"i915", {dpStudio, {"eDP-1", 'P'}}}});
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
        FakeSysfs system({{"i915", {{row.socket, 'S'}}}});
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
    for (const char* name :
         {"i915 gmbus dpb", "i915 gmbus tc1", "i915 gmbus vga", "i915 gmbus misc", "AUX C/DDI C/PHY C",
          "AMDGPU DM i2c hw bus 0", "AMDGPU DM aux hw bus 1", "AMDGPU i2c bit bus 0x90", "Radeon i2c bit bus 0x91",
          "Radeon aux bus DP-auxch", "nvkm-0000:01:00.0-bus-0000", "nvkm-0000:01:00.0-aux-000c", "sor-0006-0f42",
          "NVIDIA i2c adapter 5 at 1:00.0", "DPMST"})
        EXPECT_TRUE(isDisplayAdapterName(name)) << name;
    for (const char* name :
         {"", "SMBus I801 adapter at efa0", "SMBus PIIX4 adapter port 0 at 0b00", "AMDGPU SMU 0",
          "AMDGPU DM i2c OEM bus", "NVIDIA GPU I2C adapter", "Synopsys DesignWare I2C adapter", "i915 gmbus panel",
          "i915 gmbus ssc", "nvkm-other"})
        EXPECT_FALSE(isDisplayAdapterName(name)) << name;
}

} // namespace
} // namespace lumenvale
