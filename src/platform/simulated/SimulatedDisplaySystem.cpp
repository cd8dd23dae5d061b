// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedDisplaySystem.h"

#include "platform/simulated/SimulatedEdid.h"
#include "platform/simulated/SimulatedRegistry.h"

#include <cmath>
#include <memory>

namespace lumenvale {

namespace {

constexpr std::int32_t refused = -1;

/// The shortest decimal that is still the same 32-bit number, so that the file says 0.3 and not
/// 0.30000001192092896.
double readable(float brightness)
{
    const double rounded = std::round(double{brightness} * 1e7) / 1e7;
    return static_cast<float>(rounded) == brightness ? rounded : double{brightness};
}

/// The nearest brightness that the panel can show.
double onScale(const NativeControl& native, double brightness)
{
    return native.maximum ? std::round(brightness * *native.maximum) / *native.maximum : brightness;
}

std::int32_t getBrightness(SimulatedFolder& folder, std::uint32_t displayID, float* brightness)
{
    const auto display = folder.find(displayID);
    if (!display || !display->monitor.native || display->monitor.native->readFails)
        return refused;
    *brightness = static_cast<float>(onScale(*display->monitor.native, display->monitor.native->brightness));
    return 0;
}

std::int32_t setBrightness(SimulatedFolder& folder, std::uint32_t displayID, float brightness)
{
    const auto display = folder.find(displayID);
    if (!display || !display->monitor.native || display->monitor.native->writeFails)
        return refused;
    const NativeControl& native = *display->monitor.native;
    const double next = native.overridesTo.value_or(onScale(native, readable(brightness)));
    return next == native.brightness || display->file.setNativeBrightness(next) ? 0 : refused;
}

} // namespace

std::optional<PropertyDictionary> SimulatedDisplaySystem::informationDictionary(std::uint32_t displayID)
{
    const auto display = folder.find(displayID);
    if (!display)
        return std::nullopt;
    PropertyDictionary dictionary = simulatedEdidProperties(display->monitor);
    dictionary.emplace_back("IODisplayLocation", simulatedLocation(display->fileName));
    dictionary.emplace_back("DisplayProductName", PropertyDictionary{{"en_US", display->monitor.name}});
    return dictionary;
}

bool SimulatedDisplaySystem::isOnline(std::uint32_t displayID)
{
    const auto display = folder.find(displayID);
    return display && display->monitor.online;
}

std::optional<std::string> SimulatedDisplaySystem::uuid(std::uint32_t displayID)
{
    const auto display = folder.find(displayID);
    return display ? display->monitor.uuid : std::nullopt;
}

NativeFunctions simulatedNativeFunctions(const std::string& path)
{
    const auto folder = std::make_shared<SimulatedFolder>(path);
    NativeFunctions functions;
    functions.handle = folder;
    functions.getter = [folder](std::uint32_t displayID, float* brightness) {
        return getBrightness(*folder, displayID, brightness);
    };
    functions.setter = [folder](std::uint32_t displayID, float brightness) {
        return setBrightness(*folder, displayID, brightness);
    };
    functions.levels = [folder](std::uint32_t displayID) -> std::optional<LevelRange> {
        const auto display = folder->find(displayID);
        const bool hasLevels = display && display->monitor.native && display->monitor.native->maximum;
        return hasLevels ? std::optional(LevelRange{0, *display->monitor.native->maximum}) : std::nullopt;
    };
    functions.tryHold = [folder](std::uint32_t displayID) {
        const auto display = folder->find(displayID);
        return display && display->monitor.native ? display->file.tryHold() : holdOfNothing();
    };
    return functions;
}

} // namespace lumenvale
