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
        if (value == 2)
            return signal.reset();
        late.push_back(signal->subscribe([&](int later) { got.push_back(100 + later); }));
        signal->emit(2);
    });
    victim = signal->subscribe([&](int) { got.push_back(-1); });
    signal->emit(1);
    EXPECT_EQ(got, (std::vector{10, 1, 20, 2, 102}));
}

TEST(Published, TellsTheNewValueBeforeItIsStored)
{
    Published<int> published(1);
    std::vector<int> told;
    const auto subscription = published.subscribe([&](int next) { told.insert(told.end(), {next, *published}); });
    published.set(2);
    published.setIfChanged(2);
    published.modify([](int& value) { ++value; });
    EXPECT_EQ(told, (std::vector{2, 1, 3, 2}));
    EXPECT_EQ(*published, 3);
}

TEST(Uuid, ReadsBothCasesWritesUpperCaseAndMakesRandomOnesOfVersionFour)
{
    EXPECT_EQ(Uuid::parse("37d8832a-2D66-02ca-B9F7-8f30a301b230").value().toString(),
              "37D8832A-2D66-02CA-B9F7-8F30A301B230");
    for (const char* wrong : {"", "37D8832A-2D66-02CA-B9F7-8F30A301B23", "37D8832A-2D66-02CA-B9F7-8F30A301B2300",
                              "37D8832A+2D66-02CA-B9F7-8F30A301B230", "37D8832A-2D66-02CA-B9F7-8F30A301B23G"})
        EXPECT_FALSE(Uuid::parse(wrong)) << wrong;
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = Uuid::random().toString();
        EXPECT_TRUE(text[14] == '4' && std::string("89AB").find(text[19]) < 4 && seen.insert(text).second) << text;
    }
}

} // namespace
} // namespace lumenvale
