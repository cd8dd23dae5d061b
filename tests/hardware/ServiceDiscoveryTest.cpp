// SPDX-License-Identifier: MIT
#include "hardware/ServiceDiscovery.h"

#include "hardware/MatchScore.h"
#include "support/FakeHardwareAccess.h"

#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace lumenvale {
namespace {

constexpr const char* edidUUID = "10AC1E41-0000-0000-0A1F-0104A5351E78";

/// What the system says of the display that `edidUUID` belongs to.
PropertyDictionary information(const std::string& location = "")
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
    };
    if (!location.empty())
        display.emplace_back("IODisplayLocation", location);
    return display;
}

FakeEntry framebuffer(const std::string& path, std::int64_t serial = 0, const std::string& uuid = edidUUID)
{
    const PropertyDictionary product = {{"ManufacturerID", "DEL"},
                                        {"ProductName", "Studio 27"},
                                        {"SerialNumber", serial},
                                        {"AlphanumericSerialNumber", "QX"}};
    return {"AppleCLCD2",
            {{"EDID UUID", uuid},
             {"DisplayAttributes", PropertyDictionary{{"ProductAttributes", product}}},
             {"Transport", PropertyDictionary{{"Upstream", "DP"}, {"Downstream", "HDMI"}}}},
            path,
            nullptr};
}

FakeEntry proxy(std::shared_ptr<AVService> service, const std::string& location = "External")
{
    return {"DCPAVServiceProxy", {{"Location", location}}, "", std::move(service)};
}

std::vector<IOregService> enumerate(std::vector<FakeEntry> entries)
{
    FakeRegistry registry(std::move(entries));
    return enumerateServices(registry);
}

std::int64_t score(const PropertyDictionary& display, const IOregService& candidate)
{
    return matchScore(matchFacts(display), candidate);
}

struct Chosen : testing::Test {
    std::optional<Arm64Service> match(const std::vector<FakeEntry>& entries,
                                      const PropertyDictionary& dictionary = information("/a"))
    {
        (*displays)[1].information = dictionary;
        FakeDisplaySystem system(displays);
        return chooseService(display, system, enumerate(entries));
    }
    std::shared_ptr<AVService> choose(const std::vector<FakeEntry>& entries,
                                      const PropertyDictionary& dictionary = information("/a"))
    {
        const std::optional<Arm64Service> found = match(entries, dictionary);
        return found ? found->service : nullptr;
    }

    std::shared_ptr<FakeDisplaySystem::Displays> displays = std::make_shared<FakeDisplaySystem::Displays>();
    DisplayInfo display = [] {
        DisplayInfo info;
        info.displayID = 1;
        info.name = "Studio 27";
        return info;
    }();
    std::shared_ptr<FakeDdcMonitor> left = std::make_shared<FakeDdcMonitor>();
    std::shared_ptr<FakeDdcMonitor> right = std::make_shared<FakeDdcMonitor>();
};

TEST(EnumerateServices, EachProxyBecomesACandidateWithTheFactsOfTheFramebufferBeforeIt)
{
    const auto service = std::make_shared<FakeDdcMonitor>();
    const auto candidates = enumerate({
        proxy(nullptr, "Embedded"),
        {"IOService", {}, "", nullptr},
        framebuffer("/one", 5),
        {"AppleUnrelated", {{"Location", "External"}}, "", service},
        proxy(service),
        framebuffer("/two"),
        framebuffer("/three"),
        proxy(nullptr, "Embedded"),
    });
    ASSERT_EQ(candidates.size(), 3U);
    EXPECT_EQ(candidates[0].serviceLocation, 0);
    EXPECT_EQ(candidates[0].edidUUID, "");
    EXPECT_EQ(candidates[1].serviceLocation, 1);
    EXPECT_EQ(candidates[1].serialNumber, 5);
    EXPECT_EQ(candidates[1].manufacturerID, "DEL");
    EXPECT_EQ(candidates[1].alphanumericSerialNumber, "QX");
    EXPECT_EQ(candidates[1].transportDownstream, "HDMI");
    EXPECT_EQ(candidates[1].service, service);
    EXPECT_EQ(candidates[2].serviceLocation, 3);
    EXPECT_EQ(candidates[2].ioDisplayLocation, "/three");
    EXPECT_EQ(candidates[2].service, nullptr) << "nothing is carried over to the next framebuffer";
}

TEST(EnumerateServices, PropertiesOfAnotherTypeLeaveTheDefaults)
{
    const PropertyDictionary wrong = {{"EDID UUID", 7}, {"DisplayAttributes", "text"}, {"Transport", true}};
    const auto candidates =
        enumerate({{"IOMobileFramebufferShim", wrong, "/x", nullptr},
                   {"DCPAVServiceProxy", {{"Location", 1}}, "", std::make_shared<FakeDdcMonitor>()}});
    ASSERT_EQ(candidates.size(), 1U);
    EXPECT_EQ(candidates[0].edidUUID, "");
    EXPECT_FALSE(candidates[0].displayAttributes);
    EXPECT_EQ(candidates[0].service, nullptr);
}

TEST(MatchScore, CountsFragmentsLocationNameAndSerialNumber)
{
    const auto candidate = enumerate({framebuffer("/a", 77), proxy(nullptr)}).front();
    EXPECT_EQ(score(information("/a"), candidate), 16);
    EXPECT_EQ(score(information("/b"), candidate), 6);
    PropertyDictionary other = information("/a");
    std::erase_if(other, [](const auto& each) { return each.first == "DisplayYearManufacture"; });
    EXPECT_EQ(score(other, candidate), 12) << "without one fact no fragment is compared";
    EXPECT_EQ(score({}, candidate), 0);
}

TEST(MatchScore, NamesCompareWithoutCaseAndFallBackToTheFirstLanguage)
{
    IOregService candidate;
    candidate.productName = "STUDIO 27";
    EXPECT_EQ(
        score({{"DisplayProductName", PropertyDictionary{{"fr_FR", "Studio 27"}, {"de_DE", "x"}}}}, candidate), 1);
    EXPECT_EQ(score({{"DisplayProductName", PropertyDictionary{{"fr_FR", 1}}}}, candidate), 0);
    EXPECT_EQ(score({{"DisplayProductName", PropertyDictionary{}}}, candidate), 0);
}

TEST(MatchScore, FactsBeyondTheirRangeAreClampedAndZeroKeysNeverCompared)
{
    IOregService candidate;
    candidate.edidUUID = "FFFFFFFF-0000-0000-FFFF-000000FFFFFF";
    const auto huge = std::numeric_limits<std::int64_t>::max();
    const auto low = std::numeric_limits<std::int64_t>::min();
    const auto facts = [](std::int64_t value) {
        return PropertyDictionary{{"DisplayYearManufacture", value},   {"DisplayWeekManufacture", value},
                                  {"DisplayVendorID", value},          {"DisplayProductID", value},
                                  {"DisplayVerticalImageSize", value}, {"DisplayHorizontalImageSize", value}};
    };
    EXPECT_EQ(score(facts(huge), candidate), 4);
    candidate.edidUUID = "00000000-0000-0000-0000-000000000000";
    EXPECT_EQ(score(facts(low), candidate), 0);
}

TEST(MatchScore, AShortUUIDIsComparedAtItsEnd)
{
    PropertyDictionary display = information();
    IOregService candidate;
    candidate.edidUUID = "10AC";
    EXPECT_EQ(score(display, candidate), 1);
    candidate.edidUUID = "xx1E41";
    EXPECT_EQ(score(display, candidate), 1) << "the last four characters stand for what lies beyond";
    for (const char* shorter : {"", "1", "AC"}) {
        candidate.edidUUID = shorter;
        EXPECT_EQ(score(display, candidate), 0);
    }
}

TEST_F(Chosen, TheLocationTellsTwoIdenticalMonitorsApart)
{
    const auto found = match({framebuffer("/b"), proxy(left), framebuffer("/a"), proxy(right)});
    ASSERT_TRUE(found);
    EXPECT_EQ(found->service, right);
    EXPECT_EQ(found->matchScore, 15);
    EXPECT_EQ(found->serviceDetails.ioDisplayLocation, "/a");
}

TEST_F(Chosen, TwoIdenticalMonitorsThatNothingTellsApartAreBothRefused)
{
    EXPECT_FALSE(match({framebuffer("/b"), proxy(left), framebuffer("/c"), proxy(right)}));
    EXPECT_FALSE(match({framebuffer("/b"), proxy(left), framebuffer("/c"), proxy(nullptr, "Embedded")}))
        << "a rival without a channel of its own is a rival all the same";
}

TEST_F(Chosen, TheSerialNumberTellsIdenticalMonitorsApart)
{
    EXPECT_EQ(choose({framebuffer("/b", 76), proxy(left), framebuffer("/c", 77), proxy(right)}, information()),
              right);
}

TEST_F(Chosen, AWeakMatchNeedsTheSameSerialNumberAndName)
{
    PropertyDictionary weak = information();
    weak[4].second = 0; // the sizes and the year do not fit
    weak[0].second = 1999;
    const std::vector<FakeEntry> entries = {framebuffer("/c", 12), proxy(left)};
    EXPECT_EQ(score(weak, enumerate(entries).front()), 3);
    EXPECT_EQ(choose(entries, weak), nullptr);
    display.serial = 12;
    EXPECT_EQ(choose(entries, weak), left);
    display.name = "studio 27";
    EXPECT_EQ(choose(entries, weak), nullptr) << "the name must be the same to the letter";
    display.name = "Studio 27";
    display.serial = 0;
    EXPECT_EQ(choose({framebuffer("/c", 0), proxy(left)}, weak), nullptr);
}

TEST_F(Chosen, SeveralChannelsAtOneFramebufferAreRefused)
{
    const auto found = match({framebuffer("/a"), proxy(left), proxy(nullptr, "Embedded")});
    ASSERT_TRUE(found) << "it is identified all the same";
    EXPECT_EQ(found->service, nullptr);
    EXPECT_EQ(choose({framebuffer("/a"), proxy(left, "Embedded")}), nullptr);
    EXPECT_EQ(choose({framebuffer("/a"), proxy(left), proxy(right)}), nullptr);
    EXPECT_EQ(choose({framebuffer("/a"), proxy(nullptr, "Embedded"), proxy(left)}), left);
    EXPECT_EQ(choose({framebuffer("/a"), proxy(left), proxy(nullptr)}), left) << "one that could not be opened";
}

TEST_F(Chosen, WithoutCandidatesOrFactsThereIsNone)
{
    EXPECT_FALSE(match({}));
    EXPECT_FALSE(match({framebuffer("/a"), proxy(left)}, {}));
}

} // namespace
} // namespace lumenvale
