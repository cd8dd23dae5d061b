// SPDX-License-Identifier: MIT
#include "base/Worker.h"

#include "support/AwaitResult.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>

namespace lumenvale {
namespace {

using Job = std::function<int(const CancellationToken&)>;

/// A gate that a job waits at until the test opens it.
class Gate {
public:
    void open() { opened.store(true), opened.notify_all(); }
    void wait() { opened.wait(false); }

private:
    std::atomic<bool> opened = false;
};

struct WorkerTest : testing::Test {
    Task<> runJobs(Job job, int count)
    {
        for (int i = 0; i < count; ++i)
            co_await runOnWorker<int>(*worker, mainThread, job);
    }
    /// Waits until the worker has done everything before.
    void drain()
    {
        awaitResult(mainThread, runOnWorker<int>(*worker, mainThread, [](const auto&) { return 0; }));
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
        Gate started;
        Gate destroyed;
        std::atomic<bool> isCancelled = false;
        if (!hasBegun)
            worker->post([&] { destroyed.wait(); });
        caller.run(runJobs(
            [&](const CancellationToken& token) {
                started.open();
                destroyed.wait();
                isCancelled = token.isCancelled();
                return 0;
            },
            1));
        if (hasBegun)
            started.wait();
        caller.cancel();
        destroyed.open();
        drain();
        EXPECT_EQ(isCancelled, hasBegun);
    }
}

TEST_F(WorkerTest, DestroyingItDropsWhatHasNotBegunAndWaitsForWhatRuns)
{
    struct Opener {
        Gate& gate;
        ~Opener() { gate.open(); }
    };
    std::atomic<bool> hasFinished = false;
    std::atomic<bool> hasRunLate = false;
    Gate dropped;
    Gate started;
    worker->post([&, target = worker.get()] {
        started.open();
        dropped.wait();
        target->post([&] { hasRunLate = true; });
        hasFinished = true;
    });
    started.wait();
    worker->post([&hasRunLate, opener = std::make_shared<Opener>(dropped)] { hasRunLate = true; });
    worker.reset();
    EXPECT_TRUE(hasFinished);
    EXPECT_FALSE(hasRunLate);
}

} // namespace
} // namespace lumenvale
