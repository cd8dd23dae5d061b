// SPDX-License-Identifier: MIT
#include "platform/qt/QtClock.h"

#include <algorithm>

namespace lumenvale {

QtClock::QtClock()
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { fire(); });
}

Clock::TimePoint QtClock::now() const
{
    return std::chrono::time_point_cast<Duration>(std::chrono::steady_clock::now());
}

Clock::WallTime QtClock::wallTime() const { return std::chrono::system_clock::now(); }

Clock::TimerId QtClock::callAfter(Duration delay, std::function<void()> callback)
{
    const TimerId id = ++lastId;
    const auto position = calls.emplace(std::pair(now() + delay, id), std::move(callback)).first;
    if (position == calls.begin())
        arm();
    return id;
}

void QtClock::cancel(TimerId id)
{
    const auto call =
        std::find_if(calls.begin(), calls.end(), [id](const auto& each) { return each.first.second == id; });
    if (call == calls.end())
        return;
    const bool wasNext = call == calls.begin();
    calls.erase(call);
    if (wasNext)
        arm();
}

void QtClock::arm()
{
    if (calls.empty())
        timer.stop();
    else
        timer.start(std::max(Duration(0), calls.begin()->first.first - now()));
}

void QtClock::fire()
{
    const auto due = std::pair(now(), lastId); // calls made meanwhile wait for the next turn
    while (!calls.empty() && calls.begin()->first <= due) {
        const auto call = calls.extract(calls.begin());
        call.mapped()();
    }
    arm();
}

} // namespace lumenvale
