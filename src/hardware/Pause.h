// SPDX-License-Identifier: MIT
// How the code on the hardware thread waits: blocking, and injected so that tests only record it.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

namespace lumenvale {

using Pause = std::function<void(std::chrono::microseconds)>;

/// Blocks the calling thread.
inline Pause blockingPause()
{
    return [](std::chrono::microseconds time) { std::this_thread::sleep_for(time); };
}

} // namespace lumenvale
