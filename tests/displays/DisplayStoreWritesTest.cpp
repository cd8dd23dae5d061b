// SPDX-License-Identifier: MIT
#include "support/StoreFixture.h"

#include <cmath>
#include <limits>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Ids = std::vector<std::string>;
using Writes = std::vector<std::pair<std::string, double>>;

constexpr char applying[] = "Applying brightness…";

struct DisplayStoreWrites : StoreFixture {
    void SetUp() override
    {
        plug("A");
        plug("B", {.method = ControlMethod::apple});
        refresh();
        hardware.log.clear();
    }
};

TEST_F(DisplayStoreWrites, TenRequestsInNinetyMillisecondsMakeOneWriteOfTheLast)
{
    for (int request = 1; request <= 10; ++request) {
        store->setBrightness("A", request / 100.0);
        EXPECT_EQ(shown("A").brightness, request / 100.0);
        clock.advance(8ms);
    }
    EXPECT_EQ(shown("A").status, applying);
    EXPECT_TRUE(hardware.log.empty());
    clock.advance(10ms);
    EXPECT_EQ(hardware.log, (Ids{"set A 0.1"}));
    hardware.answer();
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 10%.");
    clock.advance(1s);
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.10}}));
    EXPECT_EQ(clock.pendingCount(), 0u);
}

TEST_F(DisplayStoreWrites, RequestsDuringAWriteMakeExactlyOneMoreAndTheSliderDoesNotJumpBack)
{
    store->setBrightness("A", 0.2);
    clock.advance(90ms);
    store->setBrightness("A", 0.3);
    store->setBrightness("A", 0.4);
    hardware.answer();
    EXPECT_EQ(shown("A").brightness, 0.4);
    EXPECT_EQ(shown("A").status, applying);
    clock.advance(89ms);
    EXPECT_TRUE(hardware.waiting().empty());
    clock.advance(1ms);
    hardware.answer();
    clock.advance(1s);
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.2}, {"A", 0.4}}));
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 40%.");
}

TEST_F(DisplayStoreWrites, DisplaysAreWrittenIndependentlyAndInTheirOwnUnits)
{
    store->setBrightness("A", 0.426);
    clock.advance(50ms);
    store->setBrightness("B", 0.4261);
    EXPECT_EQ(shown("A").brightness, 0.43);
    clock.advance(40ms);
    clock.advance(50ms);
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.43", "set B 0.4261"}));
    hardware.answer(1);
    EXPECT_EQ(shown("B").status, "Hardware brightness verified at 42.6%.");
    EXPECT_EQ(shown("A").status, applying);
    hardware.answer();
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 43%.");
}

TEST_F(DisplayStoreWrites, IgnoresWhatCannotBeWritten)
{
    plug("none", {.method = ControlMethod::unavailable});
    plug("unknown");
    refresh();
    hardware.log.clear();
    store->displays.modify([](auto& list) { list.back().brightness.reset(); });
    const auto before = store->displays.get();

    store->setBrightness("A", std::nan(""));
    store->setBrightness("A", std::numeric_limits<double>::infinity(), true);
    store->setBrightness("elsewhere", 0.5, true);
    store->setBrightness("none", 0.5, true);
    store->setBrightness("unknown", 0.5);
    store->apply({{"none", 0.5}, {"elsewhere", 0.5}, {"A", std::nan("")}});
    clock.advance(1s);
    EXPECT_EQ(store->displays.get(), before);
    EXPECT_TRUE(hardware.log.empty());

    store->setBrightness("unknown", 0.7, true);
    clock.advance(90ms);
    EXPECT_EQ(hardware.log, (Ids{"set unknown 0.7"}));
}

TEST_F(DisplayStoreWrites, AFailureIsExplainedOnItsDisplayUntilAWriteSucceeds)
{
    hardware.monitors["A"].writeError = BrightnessError::mismatch;
    store->setBrightness("A", 0.9);
    clock.advance(90ms);
    hardware.answer();
    const std::string text(description(BrightnessError::mismatch));
    EXPECT_EQ(shown("A").error, text);
    EXPECT_EQ(shown("A").status, text);
    EXPECT_EQ(shown("A").brightness, 0.9);
    EXPECT_EQ(shown("B").error, std::nullopt);

    hardware.monitors["A"].writeError.reset();
    store->setBrightness("A", 0.8);
    EXPECT_EQ(shown("A").error, text);
    clock.advance(90ms);
    hardware.answer();
    EXPECT_EQ(shown("A").error, std::nullopt);
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 80%.");
}

TEST_F(DisplayStoreWrites, ARefreshDropsWaitingValuesAndHidesTheWriteInFlight)
{
    store->setBrightness("A", 0.9);
    store->setBrightness("B", 0.1);
    clock.advance(90ms);
    store->setBrightness("A", 0.8);
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.9", "set B 0.1"}));
    store->requestRefresh();
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.9", "inspect A B"})); // B's had not begun
    hardware.answer(0);
    EXPECT_EQ(shown("A").status, applying);
    hardware.answer(0);
    clock.advance(1s);
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.9}}));
    EXPECT_EQ(shown("A").brightness, 0.9);
    EXPECT_EQ(shown("A").status, "Inspected.");
    EXPECT_EQ(shown("B").brightness, 0.5);
}

TEST_F(DisplayStoreWrites, ARequestDuringARefreshStaysOnShowInItsResultAndIsWrittenInTheNewUnits)
{
    store->requestRefresh();
    store->setBrightness("A", 0.9);
    store->setBrightness("B", 0.6);
    clock.advance(90ms);
    store->setBrightness("A", 0.126);
    hardware.monitors["A"].maximum = 10;
    hardware.answer(0);
    EXPECT_EQ(shown("A").brightness, 0.1);
    EXPECT_EQ(shown("A").status, applying);
    EXPECT_EQ(shown("B").brightness, 0.6);
    EXPECT_EQ(shown("B").status, applying);
    hardware.answerAll();
    EXPECT_EQ(shown("B").status, "Hardware brightness verified at 60.0%.");
    clock.advance(90ms);
    hardware.answerAll();
    EXPECT_EQ(hardware.writes.back(), (std::pair<std::string, double>("A", 0.1)));
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 10%.");
}

TEST_F(DisplayStoreWrites, ARequestForADisplayThatARefreshNoLongerFindsIsDropped)
{
    store->requestRefresh();
    store->setBrightness("A", 0.9);
    store->setBrightness("B", 0.9);
    unplug("A");
    screens.connect("A", 9); // still a screen, without control
    hardware.monitors["A"].method = ControlMethod::unavailable;
    unplug("B");
    store->requestRefresh(0ms);
    store->setBrightness("A", 0.8);
    store->setBrightness("B", 0.8);
    hardware.answerAll();
    EXPECT_EQ(shownIDs(), (Ids{"A"}));
    EXPECT_EQ(shown("A").status, "No control.");
    clock.advance(1s);
    EXPECT_TRUE(hardware.writes.empty());
    EXPECT_EQ(clock.pendingCount(), 0u);
}

} // namespace
} // namespace lumenvale
