// SPDX-License-Identifier: MIT
// Keeps the kernel's records of the displays for as long as they hold: they are read anew after the kernel has
// announced a change, and each time where the kernel cannot be heard. Any thread.
#pragma once

#include "platform/linux/displays/Backlight.h"
#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/I2cAdapter.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace lumenvale {

/// The records of one moment. Threads share them, so they never change.
struct DisplayRecords {
    std::vector<Connector> connectors; ///< panels first
    bool isWhole = false;              ///< what follows was read too
    std::vector<Backlight> backlights; ///< none on a machine without a panel
    std::vector<I2cAdapter> adapters;  ///< those that may lead to a monitor
    bool hasBusFiles = false;          ///< the kernel offers I2C device files (the module i2c-dev)
    std::vector<std::string> busFiles; ///< "i2c-4"

    /// The connector with this number when it is a display, else null.
    const Connector* display(std::uint32_t displayID) const;
};

using SharedRecords = std::shared_ptr<const DisplayRecords>;

class KernelRecords {
public:
    /// True when the records may have changed since the last call. Any thread, one at a time.
    using ChangeCheck = std::function<bool()>;

    /// Without a check the records never hold.
    explicit KernelRecords(SystemPaths paths, ChangeCheck hasChanged = {});

    /// The records that hold now.
    SharedRecords current();

    /// The records as they were read last, at once; reads them only if they never were.
    SharedRecords last();

    /// The same, where the connectors are enough.
    SharedRecords lastConnectors();

    SharedRecords readAnew();

    /// The last records with the power states of now, which the kernel does not announce.
    SharedRecords readPower();

    /// Something did not match the records: they hold no longer.
    void forget() { isOutdated = true; }

private:
    SharedRecords readLocked();
    SharedRecords keep(DisplayRecords read);
    SharedRecords kept() const;

    SystemPaths paths;
    ChangeCheck hasChanged;
    std::atomic<bool> isOutdated = false;
    std::mutex reading; ///< held by the one who reads
    mutable std::mutex access;
    SharedRecords records; ///< under `access`
};

} // namespace lumenvale
