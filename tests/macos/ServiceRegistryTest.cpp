// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacServiceRegistry.h"

#include "MacTest.h"
#include "hardware/ServiceDiscovery.h"

#include <IOKit/IOKitLib.h>

namespace lumenvale {
namespace {

using standin::Node;

Node framebuffer(const std::string& product, std::int64_t serial)
{
    return {"AppleCLCD2",
            {{"EDID UUID", "10AC4CD0-0000-0000-021B-0104B53C2278"},
             {"DisplayAttributes",
              PropertyDictionary{{"ProductAttributes", PropertyDictionary{{"ManufacturerID", "LMV"},
                                                                          {"ProductName", product},
                                                                          {"SerialNumber", serial},
                                                                          {"AlphanumericSerialNumber", "QX7"}}}}},
             {"Transport", PropertyDictionary{{"Upstream", "DP"}, {"Downstream", "HDMI"}}}},
            {},
            {}};
}

Node proxy(const std::string& location, const std::string& bus = {})
{
    return {"DCPAVServiceProxy", {{"Location", location}}, {}, bus};
}

struct MacServiceRegistryTest : MacTest {
    std::vector<std::string> names()
    {
        std::vector<std::string> seen;
        registry.forEachEntry([&seen](const RegistryEntry& entry) { seen.push_back(entry.name()); });
        return seen;
    }

    MacServiceRegistry registry;
};

TEST_F(MacServiceRegistryTest, ParentsComeBeforeChildrenAndSiblingsInOrder)
{
    machine.root.children = {{"a", {}, {{"b", {}, {}, {}}, {"c", {}, {}, {}}}, {}}, {"d", {}, {}, {}}};
    EXPECT_EQ(names(), (std::vector<std::string>{"a", "b", "c", "d"}));
}

TEST_F(MacServiceRegistryTest, ACandidateHasTheFactsOfTheFramebufferBeforeIt)
{
    machine.buses["dp"] = {};
    machine.root.children = {{"dispext0", {}, {framebuffer("Studio 27", 305419896), proxy("External", "dp")}, {}}};
    const auto candidates = enumerateServices(registry);
    ASSERT_EQ(candidates.size(), 1U);
    EXPECT_EQ(candidates[0].edidUUID, "10AC4CD0-0000-0000-021B-0104B53C2278");
    EXPECT_EQ(candidates[0].manufacturerID, "LMV");
    EXPECT_EQ(candidates[0].productName, "Studio 27");
    EXPECT_EQ(candidates[0].serialNumber, 305419896);
    EXPECT_EQ(candidates[0].alphanumericSerialNumber, "QX7");
    EXPECT_EQ(candidates[0].ioDisplayLocation, "IOService:/dispext0/AppleCLCD2");
    EXPECT_EQ(candidates[0].transportUpstream, "DP");
    EXPECT_EQ(candidates[0].transportDownstream, "HDMI");
    EXPECT_EQ(candidates[0].serviceLocation, 1);
    EXPECT_TRUE(candidates[0].service);
}

TEST_F(MacServiceRegistryTest, ProxiesBelongToTheFramebufferBeforeThem)
{
    machine.buses = {{"one", {}}, {"two", {}}};
    machine.root.children = {
        proxy("External", "one"), // before any framebuffer
        framebuffer("First", 1),  proxy("External", "one"),
        proxy("Embedded", "one"), // keeps the service of the one before
        framebuffer("Second", 2), proxy("Embedded", "two"),
        proxy("External", "two"), proxy("External")}; // not opened: the service before it is dropped
    const auto candidates = enumerateServices(registry);
    ASSERT_EQ(candidates.size(), 6U);
    std::vector<std::int64_t> locations;
    std::vector<bool> services;
    for (const IOregService& each : candidates) {
        locations.push_back(each.serviceLocation);
        services.push_back(bool(each.service));
    }
    EXPECT_EQ(locations, (std::vector<std::int64_t>{0, 1, 1, 2, 2, 2}));
    EXPECT_EQ(services, (std::vector<bool>{true, true, true, false, true, false}));
    EXPECT_TRUE(candidates[0].productName.empty());
    EXPECT_EQ(candidates[1].service, candidates[2].service);
}

TEST_F(MacServiceRegistryTest, MissingAndMistypedPropertiesStayAtTheirDefaults)
{
    Node mistyped{"IOMobileFramebufferShim",
                  {{"EDID UUID", 7},
                   {"DisplayAttributes", "no dictionary"},
                   {"Transport", PropertyDictionary{{"Upstream", 1}, {"Downstream", PropertyData{1}}}}},
                  {},
                  {}};
    Node halfTyped = framebuffer("Name", 1);
    halfTyped.properties[1].second = PropertyDictionary{
        {"ProductAttributes", PropertyDictionary{{"ProductName", true}, {"SerialNumber", "12"}}}};
    machine.root.children = {
        {"IOMobileFramebufferShim", {}, {}, {}},          proxy("External"), mistyped,
        {"DCPAVServiceProxy", {{"Location", 1}}, {}, {}}, halfTyped,         {"DCPAVServiceProxy", {}, {}, {}}};
    for (const IOregService& each : enumerateServices(registry)) {
        EXPECT_TRUE(each.productName.empty());
        EXPECT_EQ(each.serialNumber, 0);
        EXPECT_FALSE(each.service);
        EXPECT_TRUE(each.serviceLocation == 3 || each.edidUUID.empty());
    }
}

TEST_F(MacServiceRegistryTest, AWalkThatCannotBeginVisitsNothing)
{
    machine.root.children = {{"a", {}, {}, {}}};
    machine.failures["IORegistryEntryCreateIterator"] = {kIOReturnError};
    EXPECT_TRUE(names().empty());
    machine.failures = {{"IORegistryGetRootEntry", {}}};
    EXPECT_TRUE(names().empty());
}

TEST_F(MacServiceRegistryTest, EntriesWithoutNameOrPathAreVisitedAllTheSame)
{
    machine.root.children = {framebuffer("Studio", 1), proxy("External")};
    machine.failures["IORegistryEntryGetPath"] = {kIOReturnError};
    ASSERT_EQ(enumerateServices(registry).size(), 1U);
    EXPECT_TRUE(enumerateServices(registry)[0].ioDisplayLocation.empty());
    machine.failures["IORegistryEntryGetName"] = {kIOReturnError, 1};
    EXPECT_EQ(names(), (std::vector<std::string>{"", "DCPAVServiceProxy"}));
}

TEST_F(MacServiceRegistryTest, AWalkThatAPluggedCableEndsIsBegunAnew)
{
    machine.root.children = {{"a", {}, {}, {}}, {"b", {}, {}, {}}};
    machine.walked = [this](int steps) {
        if (steps != 1)
            return;
        machine.walked = nullptr;
        machine.root.children.push_back({"new", {}, {}, {}});
        standin::invalidateIterators();
    };
    EXPECT_EQ(names(), (std::vector<std::string>{"a", "b", "new"}));
}

TEST_F(MacServiceRegistryTest, ARegistryThatNeverRestsIsTakenAsItIs)
{
    machine.root.children = {{"a", {}, {}, {}}, {"b", {}, {}, {}}};
    machine.walked = [](int steps) {
        if (steps == 1)
            standin::invalidateIterators();
    };
    EXPECT_EQ(names(), (std::vector<std::string>{"a"}));
}

TEST_F(MacServiceRegistryTest, ARefusedServiceIsNone)
{
    machine.buses["dp"] = {};
    machine.root.children = {framebuffer("Studio", 1), proxy("External", "dp")};
    machine.failures["IOAVServiceCreateWithService"] = {};
    EXPECT_FALSE(enumerateServices(registry)[0].service);
}

TEST_F(MacServiceRegistryTest, TransfersCarryAddressesBytesAndCodes)
{
    std::vector<std::uint8_t> written;
    std::uint32_t addresses = 0;
    machine.buses["dp"] = {[&](std::uint32_t chip, std::uint32_t address, std::vector<std::uint8_t> bytes) {
                               addresses = chip << 8 | address;
                               written = std::move(bytes);
                               return KERN_SUCCESS;
                           },
                           [](std::uint32_t, std::uint32_t, std::span<std::uint8_t> bytes) {
                               std::ranges::fill(bytes, std::uint8_t{0x6E});
                               return KERN_SUCCESS;
                           }};
    machine.root.children = {framebuffer("Studio", 1), proxy("External", "dp")};
    const auto service = enumerateServices(registry)[0].service;
    ASSERT_TRUE(service);
    const std::vector<std::uint8_t> message = {0x82, 0x01, 0x10, 0xFD};
    EXPECT_EQ(service->writeI2C(0x37, 0x51, message), 0);
    EXPECT_EQ(written, message);
    EXPECT_EQ(addresses, 0x3751U);
    std::vector<std::uint8_t> reply(3);
    EXPECT_EQ(service->readI2C(0x37, 0x51, reply), 0);
    EXPECT_EQ(reply, std::vector<std::uint8_t>(3, 0x6E));
    machine.failures = {{"IOAVServiceWriteI2C", {kIOReturnTimeout}}, {"IOAVServiceReadI2C", {kIOReturnNoDevice}}};
    EXPECT_EQ(service->writeI2C(0x37, 0x51, message), kIOReturnTimeout);
    EXPECT_EQ(service->readI2C(0x37, 0x51, reply), kIOReturnNoDevice);
}

} // namespace
} // namespace lumenvale
