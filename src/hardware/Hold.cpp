// SPDX-License-Identifier: MIT
#include "hardware/Hold.h"

namespace lumenvale {

namespace {

/// Short, because the others may take the display again as soon as they let go.
constexpr auto interval = std::chrono::milliseconds(2);

} // namespace

Hold waitForHold(const std::function<Hold()>& tryHold, const HoldWait& wait, std::chrono::milliseconds patience)
{
    const auto note = [&wait](const std::string& sentence) {
        if (wait.log)
            wait.log(sentence);
    };
    Hold hold = tryHold();
    if (hold)
        return hold;
    note("Another program uses the display; waiting for it for up to " + std::to_string(patience.count()) +
         " ms.");
    std::chrono::milliseconds waited{0};
    while (!hold && waited < patience && !wait.stopping.isCancelled()) {
        wait.pause(interval);
        waited += interval;
        hold = tryHold();
    }
    note(hold ? "It let go after about " + std::to_string(waited.count()) + " ms."
              : "It did not let go of the display.");
    return hold;
}

} // namespace lumenvale
