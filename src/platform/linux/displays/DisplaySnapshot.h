// SPDX-License-Identifier: MIT
// The kernel's records that one operation on the displays answers from. Whoever begins an operation takes them.
// Belongs to one thread.
#pragma once

#include "platform/linux/displays/KernelRecords.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace lumenvale {

class DisplaySnapshot {
public:
    /// Empty until it is taken.
    explicit DisplaySnapshot(std::shared_ptr<KernelRecords> source) : source(std::move(source)) {}

    void take() { records = source->current(); }
    /// Something did not match: the next look is at the kernel itself.
    void forget() const { source->forget(); }

    const std::vector<Connector>& connectors() const { return records->connectors; }
    /// The backlight devices; none on a machine without a panel.
    const std::vector<Backlight>& backlights() const { return records->backlights; }
    /// The I2C adapters that may lead to a monitor.
    const std::vector<I2cAdapter>& adapters() const { return records->adapters; }
    /// The display with this number, or null.
    const Connector* display(std::uint32_t displayID) const { return records->display(displayID); }

private:
    std::shared_ptr<KernelRecords> source;
    SharedRecords records = std::make_shared<const DisplayRecords>();
};

} // namespace lumenvale
