// SPDX-License-Identifier: MIT
// The only source of time and of delayed calls above the hardware thread. Main thread only.
#pragma once

#include <chrono>
#include <coroutine>
#include <cstdint>
#include <functional>

namespace lumenvale {

class Clock {
public:
    using Duration = std::chrono::milliseconds;
    using TimePoint = std::chrono::time_point<std::chrono::steady_clock, Duration>;
    using WallTime = std::chrono::system_clock::time_point;
    using TimerId = std::uint64_t; ///< never 0

    virtual ~Clock() = default;

    /// Monotonic. It stands still while the machine sleeps on Linux, and goes on on a Mac.
    virtual TimePoint now() const = 0;

    /// The calendar's time.
    virtual WallTime wallTime() const = 0;

    /// Calls `callback` once, on the main thread, when `delay` has passed; never from within this call.
    virtual TimerId callAfter(Duration delay, std::function<void()> callback) = 0;

    /// Withdraws a call. An id that has fired, was withdrawn or never existed is ignored.
    virtual void cancel(TimerId id) = 0;
};

/// Awaits the passing of a delay. Destroying the waiting frame withdraws the timer.
class [[nodiscard]] Sleep {
public:
    Sleep(Clock& clock, Clock::Duration delay) : clock(clock), delay(delay) {}
    Sleep(const Sleep&) = delete;
    Sleep& operator=(const Sleep&) = delete;
    ~Sleep()
    {
        if (timer != 0)
            clock.cancel(timer);
    }

    bool await_ready() const noexcept { return false; }
    void await_suspend(std::coroutine_handle<> waiter)
    {
        timer = clock.callAfter(delay, [this, waiter] {
            timer = 0;
            waiter.resume();
        });
    }
    void await_resume() const noexcept {}

private:
    Clock& clock;
    Clock::Duration delay;
    Clock::TimerId timer = 0;
};

inline Sleep sleepFor(Clock& clock, Clock::Duration delay) { return Sleep(clock, delay); }

} // namespace lumenvale
