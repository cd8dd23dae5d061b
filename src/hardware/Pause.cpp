// SPDX-License-Identifier: MIT
#include "hardware/Pause.h"

#include <thread>

namespace lumenvale {

Pause blockingPause()
{
    return [](std::chrono::microseconds time) { std::this_thread::sleep_for(time); };
}

} // namespace lumenvale
