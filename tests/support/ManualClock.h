// SPDX-License-Identifier: MIT
// A clock that moves only when the test says so.
#pragma once

#include "base/Clock.h"

#include <map>
#include <utility>

namespace lumenvale {

class ManualClock final : public Clock {
public:
    TimePoint now() const override { return time; }
    WallTime wallTime() const override
    {
        return WallTime(std::chrono::hours(24 * 365 * 50)) + time.time_since_epoch();
    }

    TimerId callAfter(Duration delay, std::function<void()> callback) override
    {
        const TimerId id = ++lastId;
        timers.emplace(std::pair(time + delay, id), std::move(callback));
        return id;
    }
    void cancel(TimerId id) override
    {
        std::erase_if(timers, [id](const auto& each) { return each.first.second == id; });
    }

    /// Fires in order what falls due within the next `by`.
    void advance(Duration by)
    {
        const TimePoint target = time + by;
        while (!timers.empty() && timers.begin()->first.first <= target) {
            auto timer = timers.extract(timers.begin());
            time = timer.key().first;
            timer.mapped()();
        }
        time = target;
    }
    std::size_t pendingCount() const { return timers.size(); }

private:
    TimePoint time{};
    TimerId lastId = 0;
    std::map<std::pair<TimePoint, TimerId>, std::function<void()>> timers;
};

} // namespace lumenvale
