// SPDX-License-Identifier: MIT
// How the code on the hardware thread waits: blocking, and injected so that tests only record it.
#pragma once

#include <chrono>
#include <functional>

namespace lumenvale {

using Pause = std::function<void(std::chrono::microseconds)>;

/// Blocks the calling thread.
Pause blockingPause();

} // namespace lumenvale
