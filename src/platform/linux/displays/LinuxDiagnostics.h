// SPDX-License-Identifier: MIT
// Says in plain words why a display cannot be controlled here, and what would help. Looks at the kernel's records
// and at permissions only. Main thread.
#pragma once

#include "displays/Diagnostics.h"
#include "platform/linux/displays/KernelRecords.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

class LinuxDiagnostics final : public Diagnostics {
public:
    /// True when this process may read and write the file.
    using AccessCheck = std::function<bool(const std::filesystem::path&)>;

    LinuxDiagnostics(SystemPaths paths, std::shared_ptr<KernelRecords> records,
                     AccessCheck mayUse = systemAccessCheck());

    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override;

    static AccessCheck systemAccessCheck();

private:
    SystemPaths paths;
    std::shared_ptr<KernelRecords> records;
    AccessCheck mayUse;
};

} // namespace lumenvale
