// SPDX-License-Identifier: MIT
#include "base/MemoryUserDefaults.h"
#include "base/PropertyList.h"
#include "base/Published.h"
#include "base/Uuid.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {
namespace {

TEST(Signal, CallsInOrderOfSubscriptionAndNotAfterASubscriptionIsGone)
{
    Signal<int> signal;
    std::vector<int> got;
    const auto first = signal.subscribe([&](int value) { got.push_back(value); });
    {
        const auto second = signal.subscribe([&](int value) { got.push_back(value * 10); });
        signal.emit(1);
    }
    signal.emit(2);
    EXPECT_EQ(got, (std::vector{1, 10, 2}));
}

TEST(Signal, SurvivesWhatItsCallbacksDoToIt)
{
    auto signal = std::make_unique<Signal<int>>();
    std::vector<int> got;
    std::vector<Subscription> late;
    Subscription victim;
    const auto meddler = signal->subscribe([&](int value) {
        got.push_back(value);
        victim.reset();
        if (value < 2) {
            late.push_back(signal->subscribe([&](int later) { got.push_back(100 + later); }));
            signal->emit(2);
        } else {
            signal.reset();
        }
    });
    victim = signal->subscribe([&](int) { got.push_back(-1); });
    signal->emit(1);
    EXPECT_EQ(got, (std::vector{1, 2, 102}));
    EXPECT_EQ(signal, nullptr);
}

TEST(Published, TellsTheNewValueBeforeItIsStored)
{
    Published<std::string> published("old");
    std::string told;
    std::string stored;
    const auto subscription = published.subscribe([&](const std::string& next) {
        told = next;
        stored = *published;
    });
    published.set("new");
    EXPECT_EQ(told, "new");
    EXPECT_EQ(stored, "old");
    EXPECT_EQ(*published, "new");

    published.modify([](std::string& value) { value += "er"; });
    EXPECT_EQ(told, "newer");
    EXPECT_EQ(stored, "new");
    EXPECT_EQ(*published, "newer");
}

TEST(Uuid, ReadsBothCasesAndWritesUpperCase)
{
    const auto uuid = Uuid::parse("37d8832a-2D66-02ca-B9F7-8f30a301b230");
    ASSERT_TRUE(uuid);
    EXPECT_EQ(uuid->toString(), "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    for (const char* wrong : {"", "37D8832A", "37D8832A-2D66-02CA-B9F7-8F30A301B23",
                              "37D8832A-2D66-02CA-B9F7-8F30A301B2300", "37D8832A+2D66-02CA-B9F7-8F30A301B230",
                              "37D8832A-2D66-02CA-B9F7-8F30A301B23G", "{7D8832A-2D66-02CA-B9F7-8F30A301B23}"})
        EXPECT_FALSE(Uuid::parse(wrong)) << wrong;
}

TEST(Uuid, RandomOnesAreOfVersionFourAndDiffer)
{
    std::set<Uuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const Uuid uuid = Uuid::random();
        EXPECT_EQ(uuid.toString()[14], '4');
        EXPECT_NE(std::string("89AB").find(uuid.toString()[19]), std::string::npos);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

TEST(PropertyList, FindsOnlyExactTypes)
{
    const PropertyDictionary dictionary = {{"number", 1}, {"flag", true}, {"text", "1"}};
    EXPECT_EQ(*find<std::int64_t>(dictionary, "number"), 1);
    EXPECT_EQ(find<std::int64_t>(dictionary, "flag"), nullptr);
    EXPECT_EQ(find<std::int64_t>(dictionary, "text"), nullptr);
    EXPECT_EQ(find(dictionary, "none"), nullptr);
}

TEST(MemoryUserDefaults, AFailingSetKeepsTheOldValueAndIsReported)
{
    MemoryUserDefaults defaults;
    std::string reported;
    const auto subscription = defaults.observeFailures([&](const std::string& text) { reported = text; });
    defaults.set("key", "old");
    defaults.failure = "No space left on device";
    defaults.set("key", "new");
    EXPECT_EQ(readDefault<std::string>(defaults, "key"), "old");
    EXPECT_EQ(readDefault<bool>(defaults, "key"), std::nullopt);
    EXPECT_EQ(reported, "No space left on device");
}

} // namespace
} // namespace lumenvale
