// SPDX-License-Identifier: MIT
// The kernel's records of the displays at one moment. Whoever begins an operation takes it anew; all that the
// operation does then answers from it. Belongs to one thread.
#pragma once

#include "platform/linux/displays/Backlight.h"
#include "platform/linux/displays/Connector.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace lumenvale {

class DisplaySnapshot {
public:
    /// Empty until it is taken.
    explicit DisplaySnapshot(SystemPaths paths) : paths(std::move(paths)) {}

    void take();

    const std::vector<Connector>& connectors() const { return records; }
    /// The backlight devices; none on a machine without a panel.
    const std::vector<Backlight>& backlights() const { return devices; }
    /// The display with this number, or null.
    const Connector* display(std::uint32_t displayID) const;

private:
    SystemPaths paths;
    std::vector<Connector> records;
    std::vector<Backlight> devices;
};

} // namespace lumenvale
