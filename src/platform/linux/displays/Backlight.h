// SPDX-License-Identifier: MIT
// The kernel's backlight devices, and which of them dims which panel. Values; any thread.
#pragma once

#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/Sysfs.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

struct Backlight {
    enum class Type { firmware, platform, raw };

    std::string name;
    std::filesystem::path path; ///< in /sys/class/backlight
    Type type = Type::raw;
    std::int64_t maximum = 1;
    std::filesystem::path parent; ///< what it hangs off, resolved
    std::string parentSubsystem;  ///< "drm", "pci", "platform", …

    /// The lowest level that the panel is given. 0 turns many panels black, and a black panel hides the slider
    /// that would bring it back: so at least 1, and on fine scales one percent, as desktop shells do it.
    std::int64_t minimum() const;

    /// The raw value for a fraction from 0.0 to 1.0 between the lowest level and the maximum, and back.
    std::int64_t rawValue(double level) const;
    double level(std::int64_t raw) const;
};

/// All backlight devices that give a usable range.
std::vector<Backlight> readBacklights(const SystemPaths& paths);

/// The device that dims this panel: firmware before platform before raw, as the kernel's documentation advises
/// (ABI/stable/sysfs-class-backlight). With several panels each first gets the device on its own connector. A raw
/// device on its own connector is preferred to one on the card; one that hangs off something unrelated to
/// displays is never taken.
std::optional<Backlight> chooseBacklight(const Connector& panel, const std::vector<Connector>& all,
                                         const std::vector<Backlight>& backlights);

} // namespace lumenvale
