// SPDX-License-Identifier: MIT
// The device tree of the simulated monitors: for each file a framebuffer entry, then the proxy of its I2C
// channel. Hardware thread only.
#pragma once

#include "hardware/Pause.h"
#include "hardware/ServiceRegistry.h"
#include "platform/simulated/SimulatedFolder.h"

namespace lumenvale {

class SimulatedRegistry final : public ServiceRegistry {
public:
    SimulatedRegistry(std::string folder, Pause pause) : folder(std::move(folder)), pause(std::move(pause)) {}

    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override;

private:
    SimulatedFolder folder;
    Pause pause;
};

/// Where a display's framebuffer stands in the tree.
std::string simulatedLocation(const std::string& fileName);

} // namespace lumenvale
