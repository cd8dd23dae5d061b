// SPDX-License-Identifier: MIT
#include "base/Worker.h"

#include "support/ManualMainThread.h"

#include <atomic>
#include <gtest/gtest.h>
#include <latch>
#include <memory>

namespace lumenvale {
namespace {

struct WorkerTest : testing::Test {
    Task<> runJobs(std::function<int(const CancellationToken&)> job, int count)
    {
        for (int i = 0; i < count; ++i)
            co_await runOnWorker<int>(*worker, mainThread, job);
    }

    ManualMainThread mainThread;
    std::unique_ptr<Worker> worker = std::make_unique<Worker>();
    TaskHandle caller;
};

TEST_F(WorkerTest, AnsweringWhileItsCallerIsDestroyedIsHarmless)
{
    int sum = 0;
    for (int round = 0; round < 200; ++round) {
        caller.run(runJobs([&](const CancellationToken&) { return ++sum; }, 1000));
        mainThread.runOne();
        mainThread.runPending();
        caller.cancel();
    }
    worker.reset();
    const int total = sum;
    mainThread.runPending();
    EXPECT_GE(total, 200);
    EXPECT_EQ(sum, total) << "nothing runs once the worker is gone";
}

TEST_F(WorkerTest, AJobWhoseCallerIsGoneIsSkippedOrHearsOfItWhenItHasBegun)
{
    for (const bool hasBegun : {false, true}) {
        std::latch started(1);
        std::latch destroyed(1);
        std::atomic<bool> isCancelled = false;
        if (!hasBegun)
            worker->post([&] { destroyed.wait(); });
        const auto job = [&](const CancellationToken& token) {
            started.count_down();
            destroyed.wait();
            isCancelled = token.isCancelled();
            return 0;
        };
        caller.run(runJobs(job, 1));
        if (hasBegun)
            started.wait();
        caller.cancel();
        destroyed.count_down();
        awaitResult(mainThread, runOnWorker<int>(*worker, mainThread, [](const auto&) { return 0; }));
        EXPECT_EQ(isCancelled, hasBegun);
    }
}

TEST_F(WorkerTest, DestroyingItDropsWhatHasNotBegunAndWaitsForWhatRuns)
{
    std::atomic<bool> hasFinished = false;
    std::atomic<bool> hasRunLate = false;
    std::latch dropped(1);
    std::latch started(1);
    worker->post([&, target = worker.get()] {
        started.count_down();
        dropped.wait();
        target->post([&] { hasRunLate = true; });
        hasFinished = true;
    });
    started.wait();
    const auto openWhenDropped = [&dropped](void*) { dropped.count_down(); };
    worker->post([&, held = std::shared_ptr<void>(nullptr, openWhenDropped)] { hasRunLate = true; });
    worker.reset();
    EXPECT_TRUE(hasFinished);
    EXPECT_FALSE(hasRunLate);
}

} // namespace
} // namespace lumenvale
