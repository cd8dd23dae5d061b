// SPDX-License-Identifier: MIT
// The outputs of the session's Wayland compositor, with the modes that they are in.
//
// It speaks the few messages of the protocol itself (wayland.xml, xdg-output-unstable-v1.xml): the command line
// links no library of the desktop's, and a compositor that hangs must not hang it.
#pragma once

#include "platform/WindowSystem.h"

#include <chrono>
#include <string>
#include <vector>

namespace lumenvale {

/// Asks the compositor behind the socket `path` and waits for its answer, at most `patience`. In the compositor's
/// order, the first as the primary one; none when there is no compositor or it does not answer. Any thread.
std::vector<WindowScreen> waylandOutputs(const std::string& path, std::chrono::milliseconds patience);

/// The compositor's socket by the environment; empty outside of a Wayland session.
std::string waylandSocket();

} // namespace lumenvale
