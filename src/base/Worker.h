// SPDX-License-Identifier: MIT
// One thread that runs jobs in order, and the awaiter that brings a job's result back to the main thread.
#pragma once

#include "base/MainThread.h"
#include "base/Task.h"

#include <atomic>
#include <condition_variable>
#include <coroutine>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace lumenvale {

class Worker {
public:
    Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    /// Drops the jobs that have not begun, waits for the one that runs, and ends the thread.
    ~Worker();

    /// Queues a job. May be called from any thread.
    void post(std::function<void()> job);

private:
    void run();

    std::mutex mutex;
    std::condition_variable wake;
    std::deque<std::function<void()>> jobs;
    bool stopping = false;
    std::thread thread; // last: it uses the others
};

/// Tells a job on the worker that its result is no longer waited for. Copies share one state; any thread.
class CancellationToken {
public:
    bool isCancelled() const { return flag->load(std::memory_order_relaxed); }
    void cancel() const { flag->store(true, std::memory_order_relaxed); }

private:
    std::shared_ptr<std::atomic<bool>> flag = std::make_shared<std::atomic<bool>>(false);
};

/// Awaits a job's result. A job cannot be stopped once it has begun: when the waiting frame is destroyed, the
/// token is cancelled, a job that has not begun is skipped, and a late result is dropped.
template <typename Result>
class [[nodiscard]] WorkerCall {
public:
    using Job = std::function<Result(const CancellationToken&)>;

    WorkerCall(Worker& worker, MainThread& mainThread, Job job)
        : worker(worker), mainThread(mainThread), job(std::move(job))
    {
    }
    WorkerCall(const WorkerCall&) = delete;
    WorkerCall& operator=(const WorkerCall&) = delete;
    ~WorkerCall()
    {
        slot->waiter = nullptr;
        slot->token.cancel();
    }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiter)
    {
        slot->waiter = waiter;
        worker.post([work = std::move(job), shared = slot, &loop = mainThread]() mutable {
            if (shared->token.isCancelled())
                return;
            shared->result.emplace(work(shared->token));
            loop.post([delivered = std::move(shared)] {
                if (const auto resumed = std::exchange(delivered->waiter, nullptr))
                    resumed.resume();
            });
        });
    }
    Result await_resume() { return std::move(*slot->result); }

private:
    struct Slot {
        std::coroutine_handle<> waiter; // main thread only
        std::optional<Result> result;   // the worker's until it posts
        CancellationToken token;
    };

    Worker& worker;
    MainThread& mainThread;
    Job job;
    std::shared_ptr<Slot> slot = std::make_shared<Slot>();
};

/// Runs `job` on `worker` and returns its result on the main thread. Both must outlive the worker's jobs.
template <typename Result>
Task<Result> runOnWorker(Worker& worker, MainThread& mainThread,
                         std::function<Result(const CancellationToken&)> job)
{
    WorkerCall<Result> call(worker, mainThread, std::move(job));
    co_return co_await call;
}

} // namespace lumenvale
