// SPDX-License-Identifier: MIT
// Brings together what the window system knows of a screen (where it is, how large, how fast) and what the kernel
// knows of its connector (which monitor it is). Pure; main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/WindowSystem.h"
#include "platform/linux/displays/Connector.h"

#include <cstdint>
#include <map>
#include <vector>

namespace lumenvale {

/// Modes by display number, as the kernel tells them.
using KernelModes = std::map<std::uint32_t, ScreenMode>;

/// One screen per display: first those that the window system shows, in its order, then connectors that it does
/// not know, such as mirrored ones. A window screen that no connector belongs to is listed with a number made
/// from its name and without a UUID; one without a name is a placeholder and is left out.
std::vector<Screen> joinScreens(const std::vector<Connector>& connectors, const std::vector<WindowScreen>& screens,
                                const KernelModes& modes = {});

/// The displays alone, in the order of their connectors, with what `outputs` and `modes` tell of them. An output
/// belongs to a display only if a sign speaks for it: it may be that of another machine.
std::vector<Screen> describeDisplays(const std::vector<Connector>& connectors,
                                     const std::vector<WindowScreen>& outputs, const KernelModes& modes);

} // namespace lumenvale
