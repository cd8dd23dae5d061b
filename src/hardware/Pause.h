// SPDX-License-Identifier: MIT
// How the code on the hardware thread waits: blocking, and injected so that tests only record it.
#pragma once

#include "base/Worker.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <thread>

namespace lumenvale {

using Pause = std::function<void(std::chrono::microseconds)>;

/// Blocks the calling thread; ends early, within a tenth of a second, once `stopping` is cancelled.
inline Pause blockingPause(const CancellationToken& stopping = {})
{
    return [stopping](std::chrono::microseconds time) {
        constexpr std::chrono::microseconds slice{100'000}; // longer than the waits of an exchange
        for (; time.count() > 0 && !stopping.isCancelled(); time -= slice)
            std::this_thread::sleep_for(std::min(time, slice));
    };
}

} // namespace lumenvale
