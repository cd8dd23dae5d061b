// SPDX-License-Identifier: MIT
// The clock on Qt's event loop. One Qt timer serves all calls, so that calls due together wake the process once.
#pragma once

#include "base/Clock.h"

#include <QTimer>
#include <map>
#include <utility>

namespace lumenvale {

class QtClock final : public Clock {
public:
    QtClock();

    TimePoint now() const override;
    WallTime wallTime() const override;
    TimerId callAfter(Duration delay, std::function<void()> callback) override;
    void cancel(TimerId id) override;

private:
    void arm();
    void fire();

    QTimer timer;
    TimerId lastId = 0;
    std::map<std::pair<TimePoint, TimerId>, std::function<void()>> calls;
};

} // namespace lumenvale
