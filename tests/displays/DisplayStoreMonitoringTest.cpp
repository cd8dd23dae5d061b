// SPDX-License-Identifier: MIT
#include "support/StoreFixture.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Ids = std::vector<std::string>;

struct DisplayStoreMonitoring : StoreFixture {
    void SetUp() override
    {
        plug("ddc");
        plug("apple", {.method = ControlMethod::apple});
        plug("none", {.method = ControlMethod::unavailable});
        refresh();
        hardware.log.clear();
        store->startMonitoring();
        store->brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
            for (const DisplayInfo& each : changed)
                observed.push_back(each.id + " " + percentageText(each));
        };
    }
    /// Lets a round pass and answers what it asks.
    void round()
    {
        clock.advance(750ms);
        hardware.answerAll();
    }
    std::size_t reads(const std::string& id) const
    {
        return static_cast<std::size_t>(std::ranges::count(hardware.log, "read " + id));
    }

    std::vector<std::string> observed;
};

TEST_F(DisplayStoreMonitoring, ShowsAndReportsOnceWhatWasChangedElsewhere)
{
    int published = 0;
    const Subscription subscription = store->displays.subscribe([&](const auto&) { ++published; });
    store->displays.modify([](auto& list) { list[1].error = "An old error."; });
    round();
    EXPECT_EQ(shown("apple").error, std::nullopt);
    EXPECT_EQ(shown("apple").status, "Current hardware brightness read successfully.");
    EXPECT_TRUE(observed.empty());
    EXPECT_EQ(published, 2);
    round();
    EXPECT_EQ(published, 2) << "nothing changed, nobody is told";

    hardware.monitors["apple"].brightness = 0.25;
    hardware.monitors["ddc"].brightness = 0.75;
    store->setWindowVisible(true);
    for (int count = 0; count < 4; ++count)
        round();
    EXPECT_EQ(observed, (Ids{"apple 25.0%", "ddc 75%"}));
    EXPECT_EQ(shown("ddc").brightness, 0.75);
    EXPECT_EQ(reads("none"), 0u);
}

TEST_F(DisplayStoreMonitoring, ReadsDdcDisplaysSeldomAndNeverWakesASleepingScreen)
{
    for (int count = 0; count < 80; ++count)
        round();
    EXPECT_EQ(reads("apple"), 80u);
    EXPECT_EQ(reads("ddc"), 2u);

    store->setWindowVisible(true);
    for (int count = 0; count < 8; ++count)
        round();
    EXPECT_EQ(reads("ddc"), 4u);

    store->setWindowVisible(false);
    for (int count = 0; count < 10; ++count)
        round();
    store->setWindowVisible(true);
    round();
    EXPECT_EQ(reads("ddc"), 5u) << "a window that opens soon shows the truth";

    screens.asleep.insert(shown("ddc").displayID);
    for (int count = 0; count < 50; ++count)
        round();
    EXPECT_EQ(reads("ddc"), 5u);
}

TEST_F(DisplayStoreMonitoring, IgnoresReadingsThatAreNoBrightness)
{
    for (const double reading : {-0.01, 1.01, std::nan(""), std::numeric_limits<double>::infinity()}) {
        hardware.monitors["apple"].brightness = reading;
        round();
        EXPECT_EQ(shown("apple").brightness, 0.5);
    }
    hardware.monitors["apple"].isReadable = false;
    round();
    EXPECT_EQ(shown("apple").status, "Inspected.");
    EXPECT_TRUE(observed.empty());
}

TEST_F(DisplayStoreMonitoring, RestsWhileAsleepRefreshingOrWriting)
{
    events.send(SystemEvent::screensDidSleep);
    round();
    events.send(SystemEvent::screensDidWake);
    events.send(SystemEvent::systemWillSleep);
    round();
    EXPECT_TRUE(hardware.log.empty());
    events.send(SystemEvent::systemDidWake);
    clock.advance(1500ms);
    EXPECT_EQ(hardware.log, (Ids{"inspect ddc apple none"}));
    clock.advance(1500ms);
    EXPECT_EQ(hardware.log.size(), 1u);
    hardware.answerAll();

    store->setBrightness("ddc", 0.9);
    clock.advance(1500ms);
    EXPECT_EQ(hardware.log.size(), 2u);
    hardware.answerAll();
    store->apply({{"ddc", 0.2}});
    clock.advance(1500ms);
    EXPECT_EQ(hardware.log.size(), 3u);
    hardware.answerAll();
    round();
    EXPECT_EQ(hardware.log.back(), "read apple");
    EXPECT_EQ(hardware.log.size(), 4u);
}

TEST_F(DisplayStoreMonitoring, AnAnswerThatWasOvertakenChangesNothing)
{
    const std::vector<std::function<void()>> overtaking{
        [this] { store->setBrightness("ddc", 0.9); },
        [this] {
            store->apply({{"ddc", 0.9}});
        },
        [this] { store->requestRefresh(10s); },
        [this] { events.send(SystemEvent::screensDidSleep); },
    };
    for (const auto& overtake : overtaking) {
        clock.advance(750ms);
        ASSERT_EQ(hardware.waiting(), (Ids{"read apple"}));
        hardware.monitors["apple"].brightness = 0.1;
        overtake();
        hardware.answer();
        EXPECT_EQ(shown("apple").brightness, 0.5);
        hardware.monitors["apple"].brightness = 0.5;
        clock.advance(90ms);
        hardware.answerAll();
        clock.advance(10s);
        hardware.answerAll();
    }
    EXPECT_TRUE(observed.empty());
}

TEST_F(DisplayStoreMonitoring, StopsAskingTheOtherDisplaysWhenARequestComes)
{
    plug("second", {.method = ControlMethod::apple});
    refresh();
    clock.advance(750ms);
    store->setBrightness("second", 0.9);
    hardware.answerAll();
    EXPECT_EQ(reads("apple"), 1u);
    EXPECT_EQ(reads("second"), 0u);
}

TEST_F(DisplayStoreMonitoring, AfterAFailedWriteADdcDisplayIsReadNextWithTheErrorLeftOnShow)
{
    store->setWindowVisible(true);
    round();
    round();
    round();
    hardware.monitors["ddc"].writeError = BrightnessError::writeFailed;
    store->setBrightness("ddc", 0.9);
    clock.advance(90ms);
    hardware.answerAll();
    screens.asleep.insert(shown("ddc").displayID);
    round();
    EXPECT_EQ(shown("ddc").brightness, 0.9);
    screens.asleep.clear();
    round();
    EXPECT_EQ(shown("ddc").brightness, 0.5);
    EXPECT_EQ(shown("ddc").status, description(BrightnessError::writeFailed));
    EXPECT_EQ(observed, (Ids{"ddc 50%"}));
    round();
    EXPECT_EQ(reads("ddc"), 1u);
    round();
    EXPECT_EQ(reads("ddc"), 2u);
    EXPECT_EQ(shown("ddc").error, std::nullopt);
}

TEST_F(DisplayStoreMonitoring, AFailureThatIsOvercomeMakesNoReadingOutOfTurn)
{
    const std::vector<std::function<void()>> overcoming{
        [this] { store->setBrightness("ddc", 0.8); },
        [this] { store->requestRefresh(); },
    };
    for (const auto& overcome : overcoming) {
        hardware.monitors["ddc"].writeError = BrightnessError::writeFailed;
        store->setBrightness("ddc", 0.9);
        clock.advance(90ms);
        hardware.answerAll();
        hardware.monitors["ddc"].writeError.reset();
        overcome();
        clock.advance(90ms);
        hardware.answerAll();
        EXPECT_EQ(shown("ddc").error, std::nullopt);
        round();
    }
    EXPECT_EQ(reads("ddc"), 0u);
    EXPECT_EQ(reads("apple"), 2u);
}

} // namespace
} // namespace lumenvale
