// SPDX-License-Identifier: MIT
#include "hardware/MatchScore.h"
#include "support/FakeHardwareAccess.h"

#include <gtest/gtest.h>
#include <limits>
#include <sstream>

namespace lumenvale {
namespace {

constexpr char edidUUID[] = "10AC1E41-0000-0000-0A1F-0104A5351E78";

/// What the system says of the display with that EDID, with one fact changed, or left out.
PropertyDictionary information(const std::string& key = "", const std::optional<PropertyValue>& value = {})
{
    const PropertyDictionary names = {{"de_DE", "Bildschirm"}, {"en_US", "Studio 27"}};
    PropertyDictionary display = {
        {"DisplayYearManufacture", 2021}, {"DisplayWeekManufacture", 10},    {"DisplayVendorID", 0x10AC},
        {"DisplayProductID", 0x411E},     {"DisplayVerticalImageSize", 300}, {"DisplayHorizontalImageSize", 530},
        {"DisplaySerialNumber", 77},      {"DisplayProductName", names},     {"IODisplayLocation", "/location"}};
    std::erase_if(display, [&key](const auto& each) { return each.first == key; });
    if (value)
        display.emplace_back(key, *value);
    return display;
}

TEST(MatchScore, CountsWhatFits)
{
    using Limits = std::numeric_limits<std::int64_t>;
    const auto all = [](std::int64_t value) {
        PropertyDictionary facts = information("DisplaySerialNumber");
        for (std::size_t i = 0; i < 6; ++i)
            facts[i].second = value;
        return facts;
    };
    const auto named = [](const PropertyDictionary& list) {
        return PropertyDictionary{{"DisplayProductName", list}};
    };
    const IOregService edid{.edidUUID = edidUUID};
    const IOregService name{.productName = "STUDIO 27"};
    const IOregService full{
        .edidUUID = edidUUID, .productName = "Studio 27", .serialNumber = 77, .ioDisplayLocation = "/location"};
    const struct {
        PropertyDictionary display;
        IOregService candidate;
        std::int64_t score;
    } rows[] = {
        {information(), full, 16},
        {information(), edid, 4},
        {information("DisplayYearManufacture", 2020), edid, 3},
        {information("DisplayVendorID", 0x10AD), edid, 3},
        {information("DisplayProductID", 0x1E41), edid, 3},
        {information("DisplayHorizontalImageSize", 539), edid, 4}, // whole centimetres
        {information("DisplayHorizontalImageSize", 540), edid, 3},
        {information(), {.edidUUID = "10AC"}, 1},
        {information(), {.edidUUID = "xx1E41"}, 1}, // the last four stand for what lies beyond
        {information(), {.edidUUID = "0AC"}, 0},
        {information(), {}, 0},
        {{}, full, 0},
        {{}, {}, 0},
        {all(Limits::max()), {.edidUUID = "FFFFFFFF-0000-0000-FFFF-000000FFFFFF"}, 4},
        {all(Limits::min()), {.edidUUID = "00000000-0000-0000-0000-000000000000"}, 0}, // never compared
        {named({{"fr_FR", "Studio 27"}, {"de_DE", "x"}}), name, 1},
        {named({{"fr_FR", "x"}, {"en_US", "Studio 27"}}), name, 1},
        {named({{"fr_FR", 1}}), name, 0},
        {named({}), name, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(matchScore(matchFacts(row.display), row.candidate), row.score) << "row " << &row - rows;
    for (const auto& [key, value] : all(1)) {
        const bool isNeeded = value == PropertyValue(1); // without one of the six facts no fragment counts
        EXPECT_EQ(matchScore(matchFacts(information(key)), edid), isNeeded ? 0 : 4) << key;
    }
}

const auto left = std::make_shared<FakeDdcMonitor>();
const auto right = std::make_shared<FakeDdcMonitor>();

/// A registry from a text: "/a#7" is a framebuffer at /a with serial number 7, of another size after "!"; L and R
/// are external channels, 0 is one that does not open, e an embedded one; ? has properties of other types.
std::unique_ptr<FakeRegistry> registry(const std::string& text)
{
    std::vector<FakeEntry> entries;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        const auto service = word == "L" || word == "?" ? left : word == "R" ? right : nullptr;
        const std::size_t hash = std::min(word.find('#'), word.size());
        const std::int64_t serial = hash < word.size() ? std::stoi(word.substr(hash + 1)) : 0;
        const PropertyDictionary product = {{"ManufacturerID", "DEL"},
                                            {"ProductName", "Studio 27"},
                                            {"SerialNumber", serial},
                                            {"AlphanumericSerialNumber", "QX"}};
        const PropertyDictionary attributes = {{"ProductAttributes", product},
                                               {"NativeFormatHorizontalPixels", 5120},
                                               {"NativeFormatVerticalPixels", 2880}};
        const PropertyDictionary transport = {{"Upstream", "DP"}, {"Downstream", "HDMI"}};
        const std::string edid = word.ends_with('!') ? "10AC1E41-0000-0000-0A1F-0104A500" : edidUUID;
        if (word == "?")
            entries.emplace_back(
                "AppleCLCD2",
                PropertyDictionary{{"EDID UUID", 7}, {"DisplayAttributes", "text"}, {"Transport", true}}, "/?",
                service);
        else if (word[0] == '/')
            entries.emplace_back("IOMobileFramebufferShim",
                                 PropertyDictionary{{"EDID UUID", edid},
                                                    {"DisplayAttributes", attributes},
                                                    {"Transport", transport}},
                                 word.substr(0, hash), nullptr);
        else
            entries.emplace_back("DCPAVServiceProxy",
                                 PropertyDictionary{{"Location", word == "e" ? "Embedded" : "External"}}, "",
                                 service);
        entries.emplace_back("AppleUnrelated", PropertyDictionary{{"Location", "External"}}, "", right);
    }
    return std::make_unique<FakeRegistry>(entries);
}

TEST(EnumerateServices, EachProxyIsACandidateWithTheFactsOfTheFramebufferBeforeIt)
{
    const std::vector<IOregService> candidates = enumerateServices(*registry("e /one#5 L /two ? e"));
    ASSERT_EQ(candidates.size(), 3U);
    EXPECT_EQ(candidates[0].serviceLocation, 0);
    EXPECT_EQ(candidates[0].location, "Embedded");
    EXPECT_EQ(candidates[1].serviceLocation, 1);
    EXPECT_EQ(candidates[1].serialNumber, 5);
    EXPECT_EQ(candidates[1].manufacturerID, "DEL");
    EXPECT_EQ(candidates[1].service, left);
    EXPECT_EQ(candidates[2].serviceLocation, 3);
    EXPECT_EQ(candidates[2].edidUUID, "");
    EXPECT_FALSE(candidates[2].displayAttributes || candidates[2].service) << "nothing is carried over";
}

TEST(ServiceDiscovery, ADisplayGetsTheOneChannelThatIsCertainlyItsOwn)
{
    const PropertyDictionary here = information("IODisplayLocation", "/a");
    const PropertyDictionary away = information("IODisplayLocation");
    PropertyDictionary weak = away; // three signs with another size: vendor, product, name
    weak[0].second = 1999;
    const struct {
        const char* name;
        const char* registry;
        PropertyDictionary display;
        std::uint32_t serial;
        bool isIdentified;
        std::shared_ptr<AVService> service;
    } rows[] = {
        {"nothing there", "", here, 0, false, nullptr},
        {"nothing known", "/a L", {}, 0, false, nullptr},
        {"location", "/b L /a R", here, 0, true, right},
        {"twins", "/b L /c R", away, 0, false, nullptr},
        {"a rival without a channel", "/b L /c e", away, 0, false, nullptr},
        {"serial number", "/b#76 L /c#77 R", away, 0, true, right},
        {"four signs", "/b#77! L", weak, 0, true, left},
        {"three", "/b#12! L", weak, 0, false, nullptr},
        {"three and the same unit", "/b#12! L", weak, 12, true, left},
        {"three and a unit without a number", "/b! L", weak, 0, false, nullptr},
        {"two channels", "/a L R", here, 0, true, nullptr},
        {"a channel twice", "/a L e", here, 0, true, nullptr},
        {"a closed one before it", "/a e L", here, 0, true, left},
        {"one that does not open", "/a L 0", here, 0, true, left},
        {"not external", "/a e", here, 0, true, nullptr},
    };
    for (const auto& row : rows) {
        DisplayInfo display;
        display.displayID = 1;
        display.name = "Studio 27";
        display.serial = row.serial;
        FakeDisplaySystem::Displays displays = {{1, row.display}};
        ServiceDiscovery discovery(registry(row.registry), std::make_unique<FakeDisplaySystem>(displays));
        const Route route = discovery.find({display}, holdPatience).at(0);
        EXPECT_EQ(route.service, row.service) << row.name;
        EXPECT_EQ(route.downstream, row.isIdentified ? "HDMI" : "") << row.name;
        EXPECT_EQ(route.nativeFormat.value_or(PixelSize{}).height, row.isIdentified ? 2880 : 0) << row.name;
        EXPECT_EQ(discovery.identifier(1), "display-1");
        EXPECT_FALSE(discovery.identifier(2));
        display.name = "studio 27"; // must be the same to the letter
        EXPECT_TRUE(row.serial == 0 || !discovery.find({display}, holdPatience).at(0).service) << row.name;
    }
}

} // namespace
} // namespace lumenvale
