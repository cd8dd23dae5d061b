// SPDX-License-Identifier: MIT
#include "hardware/MatchScore.h"
#include "support/FakeHardwareAccess.h"
#include "support/FakeRegistry.h"

#include <gtest/gtest.h>
#include <limits>

namespace lumenvale {
namespace {

using Entries = std::vector<FakeEntry>;

/// What the system says of a display, with one fact changed, or left out when it is an empty text.
PropertyDictionary information(const std::string& changedKey = "", const PropertyValue& value = "")
{
    PropertyDictionary display = {
        {"DisplayYearManufacture", 2021},
        {"DisplayWeekManufacture", 10},
        {"DisplayVendorID", 0x10AC},
        {"DisplayProductID", 0x411E},
        {"DisplayVerticalImageSize", 300},
        {"DisplayHorizontalImageSize", 530},
        {"DisplaySerialNumber", 77},
        {"DisplayProductName", PropertyDictionary{{"de_DE", "Bildschirm"}, {"en_US", "Studio 27"}}},
        {"IODisplayLocation", "/a"},
    };
    std::erase_if(display, [&](const auto& each) { return each.first == changedKey; });
    if (!changedKey.empty() && !(value == PropertyValue("")))
        display.emplace_back(changedKey, value);
    return display;
}

/// The framebuffer of that display, at another place.
FakeEntry framebuffer(const std::string& path, std::int64_t serial = 0, const std::string& edidSize = "351E")
{
    const PropertyDictionary product = {{"ManufacturerID", "DEL"},
                                        {"ProductName", "Studio 27"},
                                        {"SerialNumber", serial},
                                        {"AlphanumericSerialNumber", "QX"}};
    return {"AppleCLCD2",
            {{"EDID UUID", "10AC1E41-0000-0000-0A1F-0104A5" + edidSize + "78"},
             {"DisplayAttributes", PropertyDictionary{{"ProductAttributes", product},
                                                      {"NativeFormatHorizontalPixels", 5120},
                                                      {"NativeFormatVerticalPixels", 2880}}},
             {"Transport", PropertyDictionary{{"Upstream", "DP"}, {"Downstream", "HDMI"}}}},
            path,
            nullptr};
}

FakeEntry proxy(std::shared_ptr<AVService> service, const std::string& location = "External")
{
    return {"DCPAVServiceProxy", {{"Location", location}}, "", std::move(service)};
}

TEST(EnumerateServices, EachProxyIsACandidateWithTheFactsOfTheFramebufferBeforeIt)
{
    const auto service = std::make_shared<FakeDdcMonitor>();
    const PropertyDictionary wrong = {{"EDID UUID", 7}, {"DisplayAttributes", "text"}, {"Transport", true}};
    FakeRegistry registry({proxy(nullptr, "Embedded"),
                           framebuffer("/one", 5),
                           {"AppleUnrelated", {{"Location", "External"}}, "", service},
                           proxy(service),
                           framebuffer("/two"),
                           {"IOMobileFramebufferShim", wrong, "/three", nullptr},
                           {"DCPAVServiceProxy", {{"Location", 1}}, "", service}});
    const std::vector<IOregService> candidates = enumerateServices(registry);
    ASSERT_EQ(candidates.size(), 3U);
    EXPECT_EQ(candidates[0].serviceLocation, 0);
    EXPECT_EQ(candidates[0].location, "Embedded");
    EXPECT_EQ(candidates[1].serviceLocation, 1);
    EXPECT_EQ(candidates[1].serialNumber, 5);
    EXPECT_EQ(candidates[1].manufacturerID, "DEL");
    EXPECT_EQ(candidates[1].service, service);
    EXPECT_EQ(candidates[2].serviceLocation, 3);
    EXPECT_EQ(candidates[2].ioDisplayLocation, "/three");
    EXPECT_EQ(candidates[2].edidUUID, "");
    EXPECT_FALSE(candidates[2].displayAttributes || candidates[2].service) << "nothing is carried over";
}

PropertyDictionary edidFacts(std::int64_t value)
{
    return {{"DisplayYearManufacture", value},   {"DisplayWeekManufacture", value},
            {"DisplayVendorID", value},          {"DisplayProductID", value},
            {"DisplayVerticalImageSize", value}, {"DisplayHorizontalImageSize", value}};
}

TEST(MatchScore, CountsWhatFits)
{
    using Limits = std::numeric_limits<std::int64_t>;
    const auto names = [](const PropertyDictionary& list) {
        return PropertyDictionary{{"DisplayProductName", list}};
    };
    const std::string uuid = "10AC1E41-0000-0000-0A1F-0104A5351E78";
    const struct {
        PropertyDictionary display;
        IOregService candidate;
        std::int64_t score;
    } rows[] = {
        {information(),
         {.edidUUID = uuid, .productName = "STUDIO 27", .serialNumber = 77, .ioDisplayLocation = "/a"},
         16},
        {information(), {.edidUUID = uuid}, 4},
        {information("DisplayYearManufacture"), {.edidUUID = uuid}, 0}, // one fact is missing
        {information("DisplayYearManufacture", 2020), {.edidUUID = uuid}, 3},
        {information("DisplayVendorID", 0x10AD), {.edidUUID = uuid}, 3},
        {information("DisplayProductID", 0x1E41), {.edidUUID = uuid}, 3},
        {information("DisplayHorizontalImageSize", 539), {.edidUUID = uuid}, 4}, // whole centimetres
        {information("DisplayHorizontalImageSize", 540), {.edidUUID = uuid}, 3},
        {information(), {.edidUUID = "10AC"}, 1},
        {information(), {.edidUUID = "xx1E41"}, 1}, // the last four stand for what lies beyond
        {information(), {.edidUUID = "0AC"}, 0},
        {information(), {}, 0},
        {{}, {.edidUUID = uuid, .productName = "", .serialNumber = 0, .ioDisplayLocation = ""}, 0},
        {edidFacts(Limits::max()), {.edidUUID = "FFFFFFFF-0000-0000-FFFF-000000FFFFFF"}, 4},
        {edidFacts(Limits::min()), {.edidUUID = "00000000-0000-0000-0000-000000000000"}, 0}, // never compared
        {names({{"fr_FR", "Studio 27"}, {"de_DE", "x"}}), {.productName = "studio 27"}, 1},
        {names({{"fr_FR", "x"}, {"en_US", "Studio 27"}}), {.productName = "studio 27"}, 1},
        {names({{"fr_FR", 1}}), {.productName = "studio 27"}, 0},
        {names({}), {.productName = "studio 27"}, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(matchScore(matchFacts(row.display), row.candidate), row.score) << "row " << &row - rows;
}

TEST(ServiceDiscovery, ADisplayGetsTheOneChannelThatIsCertainlyItsOwn)
{
    const auto left = std::make_shared<FakeDdcMonitor>();
    const auto right = std::make_shared<FakeDdcMonitor>();
    const auto away = information("IODisplayLocation");
    PropertyDictionary weak = information("DisplayYearManufacture", 1999); // 3 signs: vendor, product, name
    std::erase_if(weak, [](const auto& each) { return each.first == "IODisplayLocation"; });
    const struct {
        const char* name;
        Entries entries;
        PropertyDictionary display;
        std::uint32_t serial;
        std::string productName;
        bool isIdentified;
        std::shared_ptr<AVService> service;
    } rows[] = {
        {"nothing there", {}, information(), 0, "", false, nullptr},
        {"nothing known", {framebuffer("/a"), proxy(left)}, {}, 0, "", false, nullptr},
        {"location",
         {framebuffer("/b"), proxy(left), framebuffer("/a"), proxy(right)},
         information(),
         0,
         "",
         true,
         right},
        {"twins",
         {framebuffer("/b"), proxy(left), framebuffer("/c"), proxy(right)},
         information(),
         0,
         "",
         false,
         nullptr},
        {"a rival without a channel",
         {framebuffer("/b"), proxy(left), framebuffer("/c"), proxy(nullptr, "Embedded")},
         information(),
         0,
         "",
         false,
         nullptr},
        {"serial number",
         {framebuffer("/b", 76), proxy(left), framebuffer("/c", 77), proxy(right)},
         away,
         0,
         "",
         true,
         right},
        {"four signs", {framebuffer("/b", 77, "0000"), proxy(left)}, away, 0, "", true, left},
        {"three", {framebuffer("/b", 12, "0000"), proxy(left)}, weak, 0, "Studio 27", false, nullptr},
        {"three and the same unit",
         {framebuffer("/b", 12, "0000"), proxy(left)},
         weak,
         12,
         "Studio 27",
         true,
         left},
        {"its name in other letters",
         {framebuffer("/b", 12, "0000"), proxy(left)},
         weak,
         12,
         "studio 27",
         false,
         nullptr},
        {"no serial number", {framebuffer("/b", 0, "0000"), proxy(left)}, weak, 0, "Studio 27", false, nullptr},
        {"two channels", {framebuffer("/a"), proxy(left), proxy(right)}, information(), 0, "", true, nullptr},
        {"one channel twice",
         {framebuffer("/a"), proxy(left), proxy(nullptr, "Embedded")},
         information(),
         0,
         "",
         true,
         nullptr},
        {"a closed one before it",
         {framebuffer("/a"), proxy(nullptr, "Embedded"), proxy(left)},
         information(),
         0,
         "",
         true,
         left},
        {"one that does not open",
         {framebuffer("/a"), proxy(left), proxy(nullptr)},
         information(),
         0,
         "",
         true,
         left},
        {"not external", {framebuffer("/a"), proxy(left, "Embedded")}, information(), 0, "", true, nullptr},
    };
    for (const auto& row : rows) {
        ServiceDiscovery discovery(
            std::make_unique<FakeRegistry>(row.entries),
            std::make_unique<FakeDisplaySystem>(FakeDisplaySystem::Displays{{1, row.display}}));
        DisplayInfo display;
        display.displayID = 1;
        display.serial = row.serial;
        display.name = row.productName;
        const Route route = discovery.find({display}).at(0);
        EXPECT_EQ(route.service, row.service) << row.name;
        EXPECT_EQ(route.downstream, row.isIdentified ? "HDMI" : "") << row.name;
        EXPECT_EQ(route.nativeFormat, row.isIdentified ? std::optional(PixelSize{5120, 2880}) : std::nullopt)
            << row.name;
        EXPECT_EQ(discovery.identifier(1), "display-1");
        EXPECT_FALSE(discovery.identifier(2));
    }
}

} // namespace
} // namespace lumenvale
