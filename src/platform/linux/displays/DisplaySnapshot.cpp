// SPDX-License-Identifier: MIT
#include "platform/linux/displays/DisplaySnapshot.h"

#include <algorithm>

namespace lumenvale {

void DisplaySnapshot::take()
{
    records = readConnectors(paths);
    const bool hasPanel = std::any_of(records.begin(), records.end(), [](const Connector& each) {
        return each.isConnected && each.kind == ConnectorKind::panel;
    });
    devices = hasPanel ? readBacklights(paths) : std::vector<Backlight>();
}

const Connector* DisplaySnapshot::display(std::uint32_t displayID) const
{
    const auto found = std::find_if(records.begin(), records.end(), [displayID](const Connector& each) {
        return each.displayID == displayID && each.isDisplay();
    });
    return found == records.end() ? nullptr : &*found;
}

} // namespace lumenvale
