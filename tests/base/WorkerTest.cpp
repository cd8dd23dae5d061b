// SPDX-License-Identifier: MIT
#include "base/Worker.h"

#include "support/AwaitResult.h"
#include "support/ManualMainThread.h"

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <thread>

namespace lumenvale {
namespace {

/// A gate that a job waits at until the test opens it.
class Gate {
public:
    void open() { opened.store(true), opened.notify_all(); }
    void wait() { opened.wait(false); }

private:
    std::atomic<bool> opened = false;
};

Task<int> add(Worker& worker, MainThread& mainThread, std::shared_ptr<int> sum, int number)
{
    return runOnWorker<int>(worker, mainThread,
                            [sum, number](const CancellationToken&) { return *sum += number; });
}

Task<> addMany(Worker& worker, MainThread& mainThread, std::shared_ptr<int> sum, int count, int& seen)
{
    for (int i = 0; i < count; ++i)
        seen = co_await add(worker, mainThread, sum, 1);
}

Task<> runJob(Worker& worker, MainThread& mainThread, std::function<int(const CancellationToken&)> job)
{
    co_await runOnWorker<int>(worker, mainThread, std::move(job));
}

TEST(Worker, AnsweringWhileItsCallerIsDestroyedIsHarmless)
{
    ManualMainThread mainThread;
    const auto sum = std::make_shared<int>(0);
    int seen = 0;
    {
        Worker worker;
        for (int round = 0; round < 200; ++round) {
            TaskHandle handle;
            handle.run(addMany(worker, mainThread, sum, 1000, seen));
            mainThread.runOne();
            mainThread.runPending();
        }
    }
    const int total = *sum;
    mainThread.runPending();
    EXPECT_GE(total, 200);
    EXPECT_EQ(*sum, total) << "nothing runs once the worker is gone";
}

TEST(Worker, AJobWhoseCallerIsGoneBeforeItBeginsIsSkipped)
{
    ManualMainThread mainThread;
    const auto sum = std::make_shared<int>(0);
    Gate gate;
    int seen = 0;
    Worker worker;
    worker.post([&] { gate.wait(); });
    {
        TaskHandle handle;
        handle.run(addMany(worker, mainThread, sum, 1, seen));
    }
    gate.open();
    EXPECT_EQ(awaitResult(mainThread, add(worker, mainThread, sum, 10)), 10);
}

TEST(Worker, ARunningJobHearsThatItsCallerIsGone)
{
    ManualMainThread mainThread;
    Worker worker;
    Gate started;
    Gate destroyed;
    std::atomic<bool> cancelled = false;
    {
        TaskHandle handle;
        handle.run(runJob(worker, mainThread, [&](const CancellationToken& token) {
            started.open();
            destroyed.wait();
            cancelled = token.isCancelled();
            return 0;
        }));
        started.wait();
    }
    destroyed.open();
    awaitResult(mainThread, add(worker, mainThread, std::make_shared<int>(0), 1));
    EXPECT_TRUE(cancelled);
}

TEST(Worker, DestroyingItDropsWhatHasNotBegunAndWaitsForWhatRuns)
{
    struct Opener {
        Gate& gate;
        ~Opener() { gate.open(); }
    };
    std::atomic<bool> hasFinished = false;
    std::atomic<bool> hasRunLate = false;
    Gate dropped;
    {
        Worker worker;
        Gate started;
        worker.post([&] {
            started.open();
            dropped.wait();
            worker.post([&] { hasRunLate = true; });
            hasFinished = true;
        });
        started.wait();
        worker.post([&hasRunLate, opener = std::make_shared<Opener>(dropped)] { hasRunLate = true; });
    }
    EXPECT_TRUE(hasFinished);
    EXPECT_FALSE(hasRunLate);
}

} // namespace
} // namespace lumenvale
