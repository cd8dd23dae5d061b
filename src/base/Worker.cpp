// SPDX-License-Identifier: MIT
#include "base/Worker.h"

namespace lumenvale {

Worker::Worker() : thread([this] { run(); }) {}

Worker::~Worker()
{
    {
        std::deque<std::function<void()>> dropped; // destroyed without the lock: what they hold may post or wait
        const std::lock_guard lock(mutex);
        stopping = true;
        dropped.swap(jobs);
    }
    wake.notify_one();
    thread.join();
}

void Worker::post(std::function<void()> job)
{
    {
        const std::lock_guard lock(mutex);
        if (stopping)
            return;
        jobs.push_back(std::move(job));
    }
    wake.notify_one();
}

void Worker::run()
{
    for (;;) {
        std::function<void()> job;
        {
            std::unique_lock lock(mutex);
            wake.wait(lock, [this] { return stopping || !jobs.empty(); });
            if (stopping)
                return;
            job = std::move(jobs.front());
            jobs.pop_front();
        }
        job();
    }
}

} // namespace lumenvale
