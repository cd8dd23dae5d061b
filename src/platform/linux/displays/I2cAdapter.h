// SPDX-License-Identifier: MIT
// The I2C adapters that may lead to a monitor. An adapter is taken only when its nearest PCI device is a display
// controller and its name is one that a display driver gives to a monitor's channel: the mainboard's SMBus, power
// controllers and Type-C controllers are never even listed. Values; any thread.
#pragma once

#include "platform/linux/displays/Sysfs.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lumenvale {

struct I2cAdapter {
    int number = 0;
    std::string name;               ///< as the driver gives it
    std::filesystem::path device;   ///< in sysfs, resolved
    std::filesystem::path graphics; ///< the display controller it belongs to, resolved
    std::uint64_t incarnation = 0;  ///< changes when the kernel gives the number to a new adapter

    bool operator==(const I2cAdapter& other) const = default;
};

/// The display adapters in the order of their numbers.
std::vector<I2cAdapter> readDisplayAdapters(const SystemPaths& paths);

/// True for the names that display drivers give to channels of external monitors.
bool isDisplayAdapterName(std::string_view name);

/// The adapter's present incarnation; 0 when it is gone.
std::uint64_t currentIncarnation(const std::filesystem::path& device);

} // namespace lumenvale
