// SPDX-License-Identifier: MIT
// Finds out which I2C channel belongs to which display where nothing in a channel's registry entry says so: the
// channel is paired with the framebuffer entry before it, and that framebuffer's facts are scored against what the
// system says of a display. Hardware thread only; nothing is remembered between two calls.
#pragma once

#include "hardware/DisplayRoutes.h"
#include "hardware/DisplaySystem.h"
#include "hardware/IOregService.h"
#include "hardware/ServiceRegistry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// A display and the registry's framebuffer that is its own.
struct Arm64Service {
    std::uint32_t displayID = 0;
    std::shared_ptr<AVService> service; ///< null unless exactly one channel at that framebuffer is open
    std::int64_t serviceLocation = 0;
    bool discouraged = false; ///< several open channels claim to be this framebuffer's, so none is used
    bool dummy = false;       ///< the framebuffer has no EDID: what is connected does not say what it is
    IOregService serviceDetails;
    std::int64_t matchScore = 0; ///< see matchScore()
};

/// The candidates in the order of the walk.
std::vector<IOregService> enumerateServices(ServiceRegistry& registry);

/// Finds the display's candidate. None for a weak match (score below 4 and not the same serial number and name),
/// and when one at another framebuffer fits as well.
std::optional<Arm64Service> chooseService(const DisplayInfo& display, DisplaySystem& system,
                                          const std::vector<IOregService>& candidates);

/// The routes that a registry and a scoring find. Every answer is that of the moment.
class ServiceDiscovery final : public DisplayRoutes {
public:
    ServiceDiscovery(std::unique_ptr<ServiceRegistry> registry, std::unique_ptr<DisplaySystem> system);

    std::vector<Route> find(const std::vector<DisplayInfo>& displays, std::chrono::milliseconds patience) override;
    void beginRound() override {}
    std::optional<std::string> identifier(std::uint32_t displayID) override;

private:
    std::unique_ptr<ServiceRegistry> registry;
    std::unique_ptr<DisplaySystem> system;
};

} // namespace lumenvale
