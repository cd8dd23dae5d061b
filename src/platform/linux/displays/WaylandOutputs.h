// SPDX-License-Identifier: MIT
// The outputs of the session's Wayland compositor, with the modes that they are in.
#pragma once

#include "platform/WindowSystem.h"

#include <chrono>
#include <vector>

namespace lumenvale {

/// Asks the compositor that the environment names and waits for its answer, at most `patience`. In the
/// compositor's order, the first as the primary one; none when there is no compositor or it does not answer. Any
/// thread.
std::vector<WindowScreen> waylandOutputs(std::chrono::milliseconds patience);

/// Whether the session is a compositor's, also for programs that draw through its X server. Any thread.
bool isWaylandSession();

} // namespace lumenvale
