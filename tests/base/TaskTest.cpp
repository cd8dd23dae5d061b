// SPDX-License-Identifier: MIT
#include "base/Task.h"

#include "base/Clock.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

/// Records that the frame which holds it was destroyed.
struct Trace {
    Log& log;
    std::string text;
    ~Trace() { log.push_back(text); }
};

Task<int> child(Clock& clock, Log& log)
{
    const Trace trace{log, "child gone"};
    co_await sleepFor(clock, 10ms);
    co_return 7;
}

Task<> parent(Clock& clock, Log& log)
{
    const Trace trace{log, "parent gone"};
    const int first = co_await child(clock, log);
    const int second = co_await child(clock, log);
    log.push_back("sum " + std::to_string(first + second));
}

TEST(Task, DoesNothingUntilStartedAndReturnsItsChildrensResults)
{
    ManualClock clock;
    Log log;
    const Task<> task = parent(clock, log);
    EXPECT_EQ(clock.pendingCount(), 0u);
    task.start();
    clock.advance(20ms);
    EXPECT_TRUE(task.done());
    EXPECT_EQ(log, (Log{"child gone", "child gone", "sum 14", "parent gone"}));
}

TEST(Task, DestroyedAtEachOfItsWaitsItWithdrawsTheTimerAndReleasesEveryFrame)
{
    {
        ManualClock clock;
        Log log;
        const Task<> neverStarted = parent(clock, log);
    }
    for (const auto elapsed : {0ms, 10ms}) {
        ManualClock clock;
        Log log;
        {
            TaskHandle handle;
            handle.run(parent(clock, log));
            clock.advance(elapsed);
            EXPECT_EQ(clock.pendingCount(), 1u);
        }
        EXPECT_EQ(clock.pendingCount(), 0u);
        EXPECT_EQ(log.back(), "parent gone");
        clock.advance(1s);
    }
}

struct Owner {
    explicit Owner(Clock& source) : clock(source) {}

    Task<> cancelsItself(bool inChild)
    {
        const Trace trace{log, "gone"};
        co_await sleepFor(clock, 1ms);
        if (inChild)
            co_await cancelHandle();
        else
            handle.cancel();
        log.push_back("after cancel");
        co_await sleepFor(clock, 1ms);
        log.push_back("never");
    }
    Task<> cancelHandle()
    {
        handle.cancel();
        co_return;
    }
    Task<> restartsItself(int runs)
    {
        const Trace trace{log, "run over"};
        co_await sleepFor(clock, 1ms);
        if (runs > 1)
            handle.run(restartsItself(runs - 1));
    }

    Clock& clock;
    Log log;
    TaskHandle handle;
};

TEST(Task, ThatCancelsItselfOrIsCancelledByItsChildGoesNoFurtherThanItsNextWait)
{
    for (const bool inChild : {false, true}) {
        ManualClock clock;
        Owner owner(clock);
        owner.handle.run(owner.cancelsItself(inChild));
        clock.advance(1s);
        EXPECT_EQ(owner.log, (Log{"after cancel", "gone"}));
        EXPECT_FALSE(owner.handle.isRunning());
        EXPECT_EQ(clock.pendingCount(), 0u);
    }
}

TEST(Task, MayReplaceItselfInItsHandle)
{
    ManualClock clock;
    Owner owner(clock);
    owner.handle.run(owner.restartsItself(3));
    clock.advance(1s);
    EXPECT_EQ(owner.log, (Log{"run over", "run over", "run over"}));
    EXPECT_FALSE(owner.handle.isRunning());
}

Task<std::string> describe(Clock& clock, std::shared_ptr<int> number, std::string text)
{
    co_await sleepFor(clock, 1ms);
    co_return text + std::to_string(*number);
}

Task<> passesOwningArguments(Clock& clock, std::shared_ptr<int> number, std::string& result)
{
    result = co_await describe(clock, number, std::string(70, 'x'));
}

TEST(Task, ArgumentsThatOwnMemoryAreReleasedOnce)
{
    const auto number = std::make_shared<int>(5);
    std::string result;
    for (const auto elapsed : {0ms, 5ms}) {
        ManualClock clock;
        TaskHandle handle;
        handle.run(passesOwningArguments(clock, number, result));
        clock.advance(elapsed);
    }
    EXPECT_EQ(result, std::string(70, 'x') + "5");
    EXPECT_EQ(number.use_count(), 1);
}

Task<> waitsManyTimes(Clock& clock, int& count)
{
    for (; count < 200'000; ++count)
        co_await sleepFor(clock, 1ms);
}

TEST(Task, ALongLoopOfWaitsNeedsNoStack)
{
    ManualClock clock;
    TaskHandle handle;
    int count = 0;
    handle.run(waitsManyTimes(clock, count));
    clock.advance(300s);
    EXPECT_EQ(count, 200'000);
}

} // namespace
} // namespace lumenvale
