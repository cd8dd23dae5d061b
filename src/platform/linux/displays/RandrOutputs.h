// SPDX-License-Identifier: MIT
// The outputs of the X server, with the modes that they are in.
//
// The X libraries are loaded only here and only when they are needed: the command line works without them, and
// then knows nothing of the outputs.
#pragma once

#include "platform/WindowSystem.h"

#include <vector>

namespace lumenvale {

/// Asks the X server of the environment (DISPLAY), without making it probe its connectors. The outputs that show a
/// picture, in the server's order; their points are its pixels. None when there is no server, or it has no
/// RandR 1.3. Any thread.
std::vector<WindowScreen> randrOutputs();

} // namespace lumenvale
