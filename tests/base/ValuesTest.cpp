// SPDX-License-Identifier: MIT
#include "base/Published.h"
#include "base/Uuid.h"

#include <gtest/gtest.h>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {
namespace {

TEST(Signal, CallsInOrderOfSubscriptionAndSurvivesWhatItsCallbacksDoToIt)
{
    auto signal = std::make_unique<Signal<int>>();
    std::vector<int> got;
    std::vector<Subscription> late;
    Subscription victim;
    const auto first = signal->subscribe([&](int value) { got.push_back(10 * value); });
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
    EXPECT_EQ(got, (std::vector{10, 1, 20, 2, 102}));
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
        EXPECT_TRUE(uuid.toString()[14] == '4' && std::string("89AB").find(uuid.toString()[19]) < 4);
        EXPECT_TRUE(seen.insert(uuid).second);
    }
}

} // namespace
} // namespace lumenvale
