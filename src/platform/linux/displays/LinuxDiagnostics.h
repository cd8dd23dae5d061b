// SPDX-License-Identifier: MIT
// Says in plain words what keeps displays from being controlled here, and what would help. Main thread.
#pragma once

#include "displays/Diagnostics.h"
#include "platform/linux/displays/DisplayDiagnosis.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace lumenvale {

class LinuxDiagnostics final : public Diagnostics {
public:
    /// True when the desktop itself sets the brightness of the displays.
    using DesktopCheck = std::function<bool()>;

    LinuxDiagnostics(SystemPaths paths, std::shared_ptr<KernelRecords> records,
                     std::shared_ptr<const DisplayDiagnosis> diagnosis, DesktopCheck doesDesktopSet);

    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override;
    std::string obstacle(const DisplayInfo& display) override { return diagnosis->obstacle(display); }

private:
    SystemPaths paths;
    std::shared_ptr<KernelRecords> records;
    std::shared_ptr<const DisplayDiagnosis> diagnosis;
    DesktopCheck doesDesktopSet;
};

} // namespace lumenvale
