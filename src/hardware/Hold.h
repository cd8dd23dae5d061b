// SPDX-License-Identifier: MIT
// Keeps other programs, copies of this one included, from a display while an operation on it is under way.
// Hardware thread only.
#pragma once

#include "base/Worker.h"
#include "hardware/Pause.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

/// Lets go when its last owner does, and when the process ends.
using Hold = std::shared_ptr<void>;

/// What a display gives that nobody can hold.
inline Hold holdOfNothing() { return std::make_shared<char>(); }

/// How to wait for the others.
struct HoldWait {
    Pause pause;
    std::function<void(const std::string&)> log; ///< hears of each wait; may be empty
    CancellationToken stopping;                  ///< ends the wait
};

/// How long an operation waits for others. An operation takes some 250 ms, so several can have their turn.
constexpr auto holdPatience = std::chrono::milliseconds(3000);

/// Asks `tryHold`, which gives null while another program has the display, until it gives a hold. Null when the
/// others did not let go within `patience`.
Hold waitForHold(const std::function<Hold()>& tryHold, const HoldWait& wait,
                 std::chrono::milliseconds patience = holdPatience);

} // namespace lumenvale
