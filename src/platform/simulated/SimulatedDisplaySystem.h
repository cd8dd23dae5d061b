// SPDX-License-Identifier: MIT
// What the system says of a simulated display by its number: its dictionary, its presence, its UUID, and its own
// brightness functions. Hardware thread only.
#pragma once

#include "hardware/DisplaySystem.h"
#include "hardware/NativeBrightness.h"
#include "platform/simulated/SimulatedFolder.h"

#include <string>

namespace lumenvale {

class SimulatedDisplaySystem final : public DisplaySystem {
public:
    explicit SimulatedDisplaySystem(std::string folder) : folder(std::move(folder)) {}

    std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) override;
    bool isOnline(std::uint32_t displayID) override;
    std::optional<std::string> uuid(std::uint32_t displayID) override;

private:
    SimulatedFolder folder;
};

/// The getter and setter of the displays whose files have a "native" section.
NativeFunctions simulatedNativeFunctions(const std::string& folder);

} // namespace lumenvale
