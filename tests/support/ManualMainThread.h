// SPDX-License-Identifier: MIT
// A main thread whose loop the test turns, and the running of a task on it.
#pragma once

#include "base/MainThread.h"
#include "base/Task.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <utility>

namespace lumenvale {

class ManualMainThread final : public MainThread {
public:
    void post(std::function<void()> call) override
    {
        const std::lock_guard lock(mutex);
        calls.push_back(std::move(call));
        arrived.notify_one();
    }
    /// Waits for the next call and makes it.
    void runOne()
    {
        std::unique_lock lock(mutex);
        arrived.wait(lock, [this] { return !calls.empty(); });
        makeFirst(lock);
    }
    /// Makes the calls that have arrived.
    void runPending()
    {
        for (std::unique_lock lock(mutex); !calls.empty(); lock.lock())
            makeFirst(lock);
    }

private:
    void makeFirst(std::unique_lock<std::mutex>& lock)
    {
        const auto call = std::move(calls.front());
        calls.pop_front();
        lock.unlock();
        call();
    }

    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::function<void()>> calls;
};

/// Runs a task to its end and returns its result.
template <typename T>
T awaitResult(ManualMainThread& mainThread, Task<T> task)
{
    std::optional<T> result;
    const auto store = [](Task<T> from, std::optional<T>& to) -> Task<> { to.emplace(co_await std::move(from)); };
    const Task<> root = store(std::move(task), result);
    root.start();
    while (!root.done())
        mainThread.runOne();
    return std::move(*result);
}

} // namespace lumenvale
