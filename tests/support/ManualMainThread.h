// SPDX-License-Identifier: MIT
// A main thread whose loop the test turns.
#pragma once

#include "base/MainThread.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <utility>

namespace lumenvale {

class ManualMainThread final : public MainThread {
public:
    void post(std::function<void()> call) override
    {
        {
            const std::lock_guard lock(mutex);
            calls.push_back(std::move(call));
        }
        arrived.notify_one();
    }

    /// Waits for the next call and makes it.
    void runOne()
    {
        std::unique_lock lock(mutex);
        arrived.wait(lock, [this] { return !calls.empty(); });
        makeFirst(lock);
    }

    /// Makes the calls that have arrived; returns how many.
    std::size_t runPending()
    {
        std::size_t count = 0;
        for (std::unique_lock lock(mutex); !calls.empty(); lock.lock(), ++count)
            makeFirst(lock);
        return count;
    }

    /// Turns the loop until `condition` holds.
    template <typename Condition>
    void runUntil(Condition condition)
    {
        while (!condition())
            runOne();
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

} // namespace lumenvale
