// SPDX-License-Identifier: MIT
// Which display it is, whatever socket it is plugged into, and what it is called. Pure; any thread.
#pragma once

#include "platform/linux/displays/Connector.h"

#include <string>
#include <vector>

namespace lumenvale {

/// The display's UUID. It comes from the monitor's identity, so that it stays when the monitor moves to another
/// socket. Where that identity says nothing, is shared by its whole series, or is also claimed by another
/// connected monitor, the connector's place in the machine goes into it. `all` are the machine's connectors.
std::string displayUuid(const Connector& connector, const std::vector<Connector>& all);

/// The EDID's product name; "Built-in Display" for panels; where several would be called the same, or a monitor
/// gives no name, with its connector: "Studio 27 (DP-1)".
std::string displayName(const Connector& connector, const std::vector<Connector>& all);

} // namespace lumenvale
