// SPDX-License-Identifier: MIT
// Brings together what the window system knows of a screen (where it is, how large, how fast) and what the kernel
// knows of its connector (which monitor it is). Pure; main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/WindowSystem.h"
#include "platform/linux/displays/Connector.h"

#include <vector>

namespace lumenvale {

/// One screen per display: first those that the window system shows, in its order, then connectors that it does
/// not know, such as mirrored ones. A window screen that no connector belongs to is listed with a number made
/// from its name and without a UUID; one without a name is a placeholder and is left out.
std::vector<Screen> joinScreens(const std::vector<Connector>& connectors,
                                const std::vector<WindowScreen>& screens);

} // namespace lumenvale
