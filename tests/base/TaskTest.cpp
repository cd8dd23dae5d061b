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

Task<int> child(Clock& clock, Log& log, std::shared_ptr<int> number, std::string text)
{
    const Trace trace{log, text};
    co_await sleepFor(clock, 10ms);
    co_return *number;
}

/// Passes arguments that own memory, which GCC 12 may destroy twice.
Task<> parent(Clock& clock, Log& log, std::shared_ptr<int> number)
{
    const Trace trace{log, "parent gone"};
    const int first = co_await child(clock, log, number, std::string(70, 'x'));
    const int second = co_await child(clock, log, number, "child gone");
    log.push_back("sum " + std::to_string(first + second));
}

TEST(Task, RunsWhenStartedAndDestroyedAtAnyOfItsWaitsWithdrawsTheTimerAndReleasesEveryFrame)
{
    const auto number = std::make_shared<int>(7);
    ManualClock clock;
    for (const int turns : {-1, 0, 1, 2}) {
        Log log;
        {
            const Task<> task = parent(clock, log, number);
            EXPECT_EQ(clock.pendingCount(), 0u);
            if (turns >= 0)
                task.start();
            for (int turn = 0; turn < turns; ++turn)
                clock.advance(10ms);
            EXPECT_EQ(task.done(), turns == 2);
        }
        EXPECT_EQ(clock.pendingCount(), 0u);
        const Log whole = {std::string(70, 'x'), "child gone", "sum 14", "parent gone"};
        EXPECT_EQ(log.size(), turns < 0 ? 0u : turns + 2u);
        EXPECT_TRUE(log.empty() || log.back() == "parent gone");
        EXPECT_TRUE(turns < 2 || log == whole);
        clock.advance(1s);
        EXPECT_EQ(number.use_count(), 1);
    }
}

Task<> cancel(TaskHandle& handle)
{
    handle.cancel();
    co_return;
}

Task<> cancelsItself(Clock& clock, Log& log, TaskHandle& handle, bool inChild)
{
    const Trace trace{log, "gone"};
    co_await sleepFor(clock, 1ms);
    if (inChild)
        co_await cancel(handle);
    else
        handle.cancel();
    log.push_back("after cancel");
    co_await sleepFor(clock, 1ms);
    log.push_back("never");
}

Task<> replacesItself(Clock& clock, Log& log, TaskHandle& handle, int runs)
{
    const Trace trace{log, "run over"};
    co_await sleepFor(clock, 1ms);
    if (runs > 1)
        handle.run(replacesItself(clock, log, handle, runs - 1));
}

TEST(TaskHandle, ATaskThatCancelsItselfGoesNoFurtherThanItsNextWaitAndMayReplaceItself)
{
    ManualClock clock;
    Log log;
    TaskHandle handle;
    for (const bool inChild : {false, true}) {
        handle.run(cancelsItself(clock, log, handle, inChild));
        EXPECT_TRUE(handle.isRunning());
        clock.advance(1s);
        EXPECT_EQ(std::exchange(log, {}), (Log{"after cancel", "gone"}));
        EXPECT_EQ(clock.pendingCount(), 0u);
    }
    handle.run(replacesItself(clock, log, handle, 3));
    clock.advance(1s);
    EXPECT_EQ(log, (Log{"run over", "run over", "run over"}));
    EXPECT_FALSE(handle.isRunning());
}

Task<> waitsManyTimes(Clock& clock, int& count)
{
    for (; count < 200'000; ++count)
        co_await sleepFor(clock, 1ms);
}

TEST(TaskHandle, ALongLoopOfWaitsNeedsNoStack)
{
    ManualClock clock;
    int count = 0;
    TaskHandle handle;
    handle.run(waitsManyTimes(clock, count));
    clock.advance(300s);
    EXPECT_EQ(count, 200'000);
}

} // namespace
} // namespace lumenvale
