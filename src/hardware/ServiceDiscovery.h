// SPDX-License-Identifier: MIT
// Finds out which I2C channel belongs to which display. Nothing in a channel's registry entry says so; it is
// paired with the framebuffer entry before it, and that framebuffer's facts are scored against what the system
// says of a display. Hardware thread only; no state survives a call.
#pragma once

#include "displays/DisplayInfo.h"
#include "hardware/DisplaySystem.h"
#include "hardware/IOregService.h"
#include "hardware/ServiceRegistry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace lumenvale {

/// A display and the registry's framebuffer that is its own.
struct Arm64Service {
    std::uint32_t displayID = 0;
    std::shared_ptr<AVService> service; ///< null unless exactly one channel at that framebuffer is open
    std::int64_t serviceLocation = 0;
    bool discouraged = false; ///< never set: nothing here speaks against a channel that matched
    bool dummy = false;       ///< never set: such framebuffers have no channel
    IOregService serviceDetails;
    std::int64_t matchScore = 0; ///< see matchScore()
};

/// The candidates in the order of the walk.
std::vector<IOregService> enumerateServices(ServiceRegistry& registry);

/// Finds the display's candidate. None for a weak match (score below 4 and not the same serial number and name),
/// and when one at another framebuffer fits as well.
std::optional<Arm64Service> chooseService(const DisplayInfo& display, DisplaySystem& system,
                                          const std::vector<IOregService>& candidates);

} // namespace lumenvale
