// SPDX-License-Identifier: MIT
// Says in plain words why one display cannot be controlled, and what would help. Looks at the kernel's records, at
// permissions, at locks and at what went wrong before; never at a bus. Any thread.
#pragma once

#include "displays/Diagnostics.h"
#include "platform/linux/displays/DisplayTroubles.h"
#include "platform/linux/displays/KernelRecords.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumenvale {

class DisplayDiagnosis {
public:
    /// True when this process may read and write the file. Any thread.
    using AccessCheck = std::function<bool(const std::filesystem::path&)>;

    /// 0 when the login service answers, else the system's error number. Any thread.
    using ServiceCheck = std::function<int()>;

    DisplayDiagnosis(SystemPaths paths, std::shared_ptr<KernelRecords> records,
                     std::shared_ptr<const DisplayTroubles> troubles, ServiceCheck askLoginService,
                     AccessCheck mayUse = systemAccessCheck());

    /// What was found of an inspected display. The remedy is in whole sentences.
    Finding examine(const DisplayInfo& display) const;

    /// Cause and remedy in one line, for a display that could not be read or set; empty where the monitor merely
    /// gave no answer, and where nothing was found.
    std::string obstacle(const DisplayInfo& display) const;

    /// The display's I2C device files: those that may be its channel. None for panels.
    std::vector<std::filesystem::path> channelFiles(const Connector& connector, const DisplayRecords& known) const;

    bool mayOpen(const std::filesystem::path& file) const { return mayUse(file); }

    static AccessCheck systemAccessCheck();

private:
    Finding examinePanel(const DisplayInfo& display, const Connector& connector,
                         const DisplayRecords& known) const;
    Finding examineExternal(const DisplayInfo& display, const Connector& connector,
                            const DisplayRecords& known) const;
    Finding examineSilence(const DisplayInfo& display, const Connector& connector,
                           const std::vector<std::filesystem::path>& channels) const;

    SystemPaths paths;
    std::shared_ptr<KernelRecords> records;
    std::shared_ptr<const DisplayTroubles> troubles;
    ServiceCheck askLoginService;
    AccessCheck mayUse;
};

} // namespace lumenvale
