// SPDX-License-Identifier: MIT
#pragma once

#include "base/Signal.h"

#include <coroutine>

namespace lumenvale {

/// Awaits a signal's next emission; the task goes on within it. Destroying the waiting frame withdraws it.
class NextEmission {
public:
    explicit NextEmission(Signal<>& signal) : signal(signal) {}

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiter)
    {
        subscription = signal.subscribe([waiter] { waiter.resume(); });
    }
    void await_resume() noexcept { subscription.reset(); }

private:
    Signal<>& signal;
    Subscription subscription;
};

} // namespace lumenvale
