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
    const Log whole = {std::string(70, 'x'), "child gone", "sum 14", "parent gone"};
    const std::pair<int, Log> rows[] = {
        {-1, {}}, {0, {whole[0], whole[3]}}, {1, {whole[0], whole[1], whole[3]}}, {2, whole}};
    for (const auto& [turns, expected] : rows) {
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
        EXPECT_EQ(log, expected);
        EXPECT_EQ(number.use_count(), 1);
    }
}

Task<> cancel(TaskHandle& handle)
{
    handle.cancel();
    co_return;
}

Task<> cancelsItself(Clock& clock, Log& log, TaskHandle& handle)
{
    co_await cancel(handle);
    log.push_back("after cancel");
    co_await sleepFor(clock, 1ms);
    log.push_back("never");
}

/// Waits many times, and then runs itself once more.
Task<> replacesItself(Clock& clock, Log& log, TaskHandle& handle, int runs)
{
    const Trace trace{log, "run over"};
    for (int wait = 0; wait < 100'000; ++wait)
        co_await sleepFor(clock, 1ms);
    if (runs > 1)
        handle.run(replacesItself(clock, log, handle, runs - 1));
}

TEST(TaskHandle, ATaskMayCancelOrReplaceItselfAndALongLoopOfWaitsNeedsNoStack)
{
    ManualClock clock;
    Log log;
    TaskHandle handle;
    handle.run(cancelsItself(clock, log, handle));
    EXPECT_EQ(std::exchange(log, {}), Log{"after cancel"}) << "it goes on until its next wait";
    EXPECT_EQ(clock.pendingCount(), 0u);
    handle.run(replacesItself(clock, log, handle, 2));
    clock.advance(300s);
    EXPECT_EQ(log, (Log{"run over", "run over"}));
    EXPECT_FALSE(handle.isRunning());
}

} // namespace
} // namespace lumenvale
