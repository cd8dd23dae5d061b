// SPDX-License-Identifier: MIT
// How other threads hand their results to the main thread.
#pragma once

#include <functional>

namespace lumenvale {

class MainThread {
public:
    virtual ~MainThread() = default;

    /// Queues `call` for the main thread's loop, in order. May be called from any thread. Calls still queued
    /// when the loop ends are destroyed without being made.
    virtual void post(std::function<void()> call) = 0;
};

} // namespace lumenvale
