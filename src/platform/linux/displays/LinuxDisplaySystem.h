// SPDX-License-Identifier: MIT
// What the kernel knows of a display by its number, read anew for every answer. Hardware thread only.
#pragma once

#include "hardware/DisplaySystem.h"
#include "platform/linux/displays/Sysfs.h"

namespace lumenvale {

class LinuxDisplaySystem final : public DisplaySystem {
public:
    explicit LinuxDisplaySystem(SystemPaths paths);

    /// "IODisplayLocation" is the connector's path; what comes from the EDID is left out without one.
    std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) override;
    bool isOnline(std::uint32_t displayID) override;
    std::optional<std::string> uuid(std::uint32_t displayID) override;

private:
    SystemPaths paths;
};

} // namespace lumenvale
