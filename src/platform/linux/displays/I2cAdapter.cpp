// SPDX-License-Identifier: MIT
#include "platform/linux/displays/I2cAdapter.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <sys/stat.h>

namespace lumenvale {

namespace {

/// What stands before the varying part. Left out on purpose although they hang off a display controller:
/// "AMDGPU SMU" and "AMDGPU DM i2c OEM bus" (power parts, EEPROMs, lights), "i915 gmbus panel" and "… ssc"
/// (the panel's own), "NVIDIA GPU I2C adapter" (Type-C controller).
constexpr std::array<std::string_view, 13> allowedPrefixes = {
    "i915 gmbus vga", "i915 gmbus dp",         "i915 gmbus tc",         "i915 gmbus misc",
    "AUX ",           "AMDGPU DM i2c hw bus ", "AMDGPU DM aux hw bus ", "AMDGPU i2c ",
    "Radeon i2c ",    "Radeon aux ",           "NVIDIA i2c adapter ",   "DPMST",
    "sor-",
};

bool isNouveauName(std::string_view name)
{
    return name.starts_with("nvkm-") &&
           (name.find("-bus-") != std::string_view::npos || name.find("-aux-") != std::string_view::npos);
}

bool isPciDevice(const std::filesystem::path& directory)
{
    return linkTarget(directory / "subsystem").filename() == "pci";
}

bool isDisplayController(const std::filesystem::path& pciDevice)
{
    return readAttribute(pciDevice / "class").value_or("").starts_with("0x03"); // PCI base class 3
}

using Controllers = std::map<std::filesystem::path, std::optional<std::filesystem::path>>;

/// The nearest PCI device, `device` or above it, if that is a display controller. `known` keeps what was found:
/// the adapters of a card share most of the way.
std::optional<std::filesystem::path> displayControllerOf(const std::filesystem::path& device, Controllers& known)
{
    if (!device.has_relative_path())
        return std::nullopt;
    if (const auto found = known.find(device); found != known.end())
        return found->second;
    std::optional<std::filesystem::path> controller;
    if (!isPciDevice(device))
        controller = displayControllerOf(device.parent_path(), known);
    else if (isDisplayController(device))
        controller = device;
    return known.emplace(device, controller).first->second;
}

std::optional<I2cAdapter> readAdapter(const std::filesystem::path& entry, Controllers& controllers)
{
    constexpr std::string_view prefix = "i2c-";
    const std::string fileName = entry.filename().string();
    if (!fileName.starts_with(prefix))
        return std::nullopt; // a device on a bus
    const std::optional<std::int64_t> number = parseNumber(std::string_view(fileName).substr(prefix.size()));
    if (!number || *number < 0 || *number > 0xFFFFF)
        return std::nullopt;
    I2cAdapter adapter;
    adapter.number = static_cast<int>(*number);
    adapter.name = readAttribute(entry / "name").value_or("");
    if (!isDisplayAdapterName(adapter.name))
        return std::nullopt;
    adapter.device = linkTarget(entry);
    const std::optional<std::filesystem::path> graphics =
        displayControllerOf(adapter.device.parent_path(), controllers);
    if (!graphics)
        return std::nullopt;
    adapter.graphics = *graphics;
    adapter.incarnation = currentIncarnation(adapter.device);
    return adapter;
}

} // namespace

std::vector<I2cAdapter> readDisplayAdapters(const SystemPaths& paths)
{
    const std::filesystem::path directory = paths.sysfs / "bus/i2c/devices";
    std::vector<I2cAdapter> adapters;
    Controllers controllers;
    for (const std::string& entry : entryNames(directory)) {
        if (const std::optional<I2cAdapter> adapter = readAdapter(directory / entry, controllers))
            adapters.push_back(*adapter);
    }
    return adapters;
}

bool isDisplayAdapterName(std::string_view name)
{
    return isNouveauName(name) || std::any_of(allowedPrefixes.begin(), allowedPrefixes.end(),
                                              [name](std::string_view each) { return name.starts_with(each); });
}

std::uint64_t currentIncarnation(const std::filesystem::path& device)
{
    struct stat record = {};
    return ::stat(device.c_str(), &record) == 0 ? static_cast<std::uint64_t>(record.st_ino) : 0;
}

} // namespace lumenvale
