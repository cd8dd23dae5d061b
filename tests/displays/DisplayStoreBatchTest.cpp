// SPDX-License-Identifier: MIT
#include "support/StoreFixture.h"

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Ids = std::vector<std::string>;
using Writes = std::vector<std::pair<std::string, double>>;

constexpr char applying[] = "Applying brightness…";

struct DisplayStoreBatch : StoreFixture {
    void SetUp() override
    {
        for (const char* id : {"A", "B", "C"})
            plug(id);
        refresh();
        hardware.log.clear();
    }
    /// Waits for the writes in a task of its own.
    void waitForWrites(int& finished) { waits.emplace_back(countWhenFinished(finished)).start(); }
    Task<> countWhenFinished(int& finished)
    {
        co_await store->pendingWritesFinished();
        ++finished;
    }

    std::vector<Task<>> waits;
};

TEST_F(DisplayStoreBatch, WritesOneDisplayAfterAnotherInDisplayOrderAndShowsAllAtOnce)
{
    hardware.monitors["B"].writeError = BrightnessError::readFailed;
    store->moveDisplays({2}, 0);
    store->apply({{"A", 0.101}, {"B", 0.2}, {"C", 0.3}, {"elsewhere", 0.4}});
    EXPECT_EQ(shown("A").brightness, 0.1);
    for (const char* id : {"A", "B", "C"})
        EXPECT_EQ(shown(id).status, applying);
    EXPECT_EQ(hardware.waiting(), (Ids{"set C 0.3"}));
    hardware.answer();
    EXPECT_EQ(shown("C").status, "Hardware brightness verified at 30%.");
    EXPECT_EQ(shown("A").status, applying);
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.1"}));
    hardware.answerAll();
    EXPECT_EQ(shown("B").error, description(BrightnessError::readFailed));
    EXPECT_EQ(hardware.writes, (Writes{{"C", 0.3}, {"A", 0.1}, {"B", 0.2}}));
    clock.advance(1s);
    EXPECT_EQ(hardware.log.size(), 3u);
}

TEST_F(DisplayStoreBatch, TheUsersOwnRequestReplacesTheBatchsLevelOfThatDisplay)
{
    store->apply({{"A", 0.1}, {"B", 0.2}, {"C", 0.3}});
    store->setBrightness("B", 0.9);
    store->setBrightness("A", 0.8); // the batch is writing it
    clock.advance(90ms);
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.1", "set B 0.9", "set A 0.8"}));
    hardware.answer(0);
    EXPECT_EQ(shown("A").brightness, 0.8);
    EXPECT_EQ(shown("A").status, applying);
    hardware.answerAll();
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.1}, {"B", 0.9}, {"A", 0.8}, {"C", 0.3}}));
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 80%.");
}

TEST_F(DisplayStoreBatch, LevelsForADisplayThatTheUserIsMovingReplaceItsRequestAndSurviveARefresh)
{
    store->setBrightness("A", 0.9);
    clock.advance(90ms);
    store->setBrightness("A", 0.8);
    store->apply({{"B", 0.2}, {"A", 0.1}});
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.9", "set A 0.1"}));
    hardware.answer();
    EXPECT_EQ(shown("A").brightness, 0.1);
    EXPECT_EQ(shown("A").status, applying);
    store->requestRefresh(1s);
    hardware.answerAll();
    clock.advance(90ms);
    hardware.answerAll();
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.9}, {"A", 0.1}, {"B", 0.2}}));
}

TEST_F(DisplayStoreBatch, ASecondOneReplacesTheLevelsThatItNamesAndKeepsTheOthers)
{
    store->apply({{"A", 0.1}, {"C", 0.3}});
    store->apply({{"B", 0.2}, {"C", 0.4}});
    hardware.answerAll();
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.1}, {"B", 0.2}, {"C", 0.4}}));
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 10%.") << "its write was in flight";
}

TEST_F(DisplayStoreBatch, GoesOnThroughARefreshWhichShowsTheLevelsStillToCome)
{
    store->apply({{"A", 0.1}, {"B", 0.2}, {"C", 0.3}});
    store->requestRefresh();
    unplug("C");
    store->requestRefresh();
    EXPECT_EQ(hardware.waiting(), (Ids{"set A 0.1", "inspect A B"}));
    hardware.answer(0);
    EXPECT_EQ(shown("A").status, applying) << "the refresh hides what was in flight";
    EXPECT_EQ(hardware.waiting(), (Ids{"inspect A B", "set B 0.2"}));
    hardware.answer(0);
    EXPECT_EQ(shown("A").status, "Inspected.");
    EXPECT_EQ(shown("A").brightness, 0.1);
    EXPECT_EQ(shown("B").status, applying);
    EXPECT_EQ(shown("B").brightness, 0.2);
    hardware.answerAll();
    EXPECT_EQ(shown("B").status, "Hardware brightness verified at 20%.");
    EXPECT_EQ(hardware.writes, (Writes{{"A", 0.1}, {"B", 0.2}})) << "C is gone";
}

TEST_F(DisplayStoreBatch, WritesInTheUnitsThatARefreshFinds)
{
    store->apply({{"A", 0.1}, {"B", 0.26}});
    hardware.monitors["B"].maximum = 10;
    store->requestRefresh();
    hardware.answer(1);
    EXPECT_EQ(shown("B").brightness, 0.3);
    hardware.answer(0);
    EXPECT_EQ(hardware.waiting(), (Ids{"set B 0.3"}));
}

TEST_F(DisplayStoreBatch, AnOutcomeIsNotHiddenByARequestThatARefreshHasDropped)
{
    store->setBrightness("A", 0.9);
    store->requestRefresh(10s);
    store->apply({{"A", 0.1}});
    hardware.answer();
    EXPECT_EQ(shown("A").status, "Hardware brightness verified at 10%.");
}

TEST_F(DisplayStoreBatch, PendingWritesFinishWhenTheLastWriteOfAnyKindHas)
{
    int finished = 0;
    waitForWrites(finished);
    EXPECT_EQ(finished, 1) << "nothing is being written";

    store->setBrightness("A", 0.9);
    store->apply({{"B", 0.2}, {"C", 0.3}});
    waitForWrites(finished);
    waitForWrites(finished);
    hardware.answer();
    hardware.answer();
    clock.advance(90ms);
    EXPECT_EQ(finished, 1);
    hardware.answer();
    EXPECT_EQ(finished, 1) << "those who wait go on from the main loop";
    store->setBrightness("A", 0.6);
    clock.advance(0ms);
    EXPECT_EQ(finished, 1) << "a request came before the turn of those who wait";
    clock.advance(90ms);
    hardware.answer();
    clock.advance(0ms);
    EXPECT_EQ(finished, 3);

    const Subscription subscription = store->displays.subscribe([&](const auto&) { waitForWrites(finished); });
    store->apply({{"A", 0.5}});
    EXPECT_EQ(finished, 3) << "writing has begun when it is announced";
}

TEST_F(DisplayStoreBatch, PendingWritesFinishWhenARefreshHasDroppedThem)
{
    int finished = 0;
    store->setBrightness("A", 0.9);
    waitForWrites(finished);
    store->requestRefresh();
    clock.advance(0ms);
    EXPECT_EQ(finished, 1);

    store->apply({{"A", 0.1}});
    waitForWrites(finished);
    store->requestRefresh();
    hardware.answer(0);
    clock.advance(0ms);
    EXPECT_EQ(finished, 1) << "the batch goes on";
    hardware.answerAll();
    clock.advance(0ms);
    EXPECT_EQ(finished, 2);

    store->apply({{"A", 0.1}});
    waitForWrites(finished);
    hardware.answerAll();
    store->requestRefresh(1s);
    EXPECT_EQ(finished, 2) << "a refresh asked for in between does not bring the turn of those who wait forward";
    clock.advance(0ms);
    EXPECT_EQ(finished, 3);
}

} // namespace
} // namespace lumenvale
