// SPDX-License-Identifier: MIT
// Finds out which I2C channel belongs to which display. Nothing in a channel's registry entry says so; it is
// paired with the framebuffer entry before it, and that framebuffer's facts are scored against what the system
// says of a display. Hardware thread only; no state survives a call.
#pragma once

#include "base/PropertyList.h"
#include "displays/DisplayInfo.h"
#include "hardware/AVService.h"
#include "hardware/DisplaySystem.h"
#include "hardware/ServiceRegistry.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// A candidate: a channel with the facts of the framebuffer before it. What a property does not give stays at its
/// default.
struct IOregService {
    std::string edidUUID;
    std::string manufacturerID;
    std::string productName;
    std::int64_t serialNumber = 0;
    std::string alphanumericSerialNumber;
    std::string location;          ///< "External" for a channel that can be opened
    std::string ioDisplayLocation; ///< the framebuffer's path in the service plane
    std::string transportUpstream;
    std::string transportDownstream;
    std::shared_ptr<AVService> service;
    std::int64_t serviceLocation = 0; ///< ordinal of the framebuffer in the walk, from 1; 0 without one
    std::optional<PropertyDictionary> displayAttributes;
};

/// A candidate seen from one display.
struct Arm64Service {
    std::uint32_t displayID = 0;
    std::shared_ptr<AVService> service;
    std::int64_t serviceLocation = 0;
    bool discouraged = false;
    bool dummy = false;
    IOregService serviceDetails;
    std::int64_t matchScore = 0; ///< 0 to 16
};

/// What a display was matched to.
struct ServiceChoice {
    std::optional<IOregService> details; ///< of the entry that is the display's; none when that is in doubt
    std::shared_ptr<AVService> service;  ///< null when there is no single channel at that entry
};

/// The candidates in the order of the walk.
std::vector<IOregService> enumerateServices(ServiceRegistry& registry);

/// How well a candidate fits a display's information dictionary (see DisplaySystem): four EDID fragments, 1 each;
/// the location, 10; name and serial number, 1 each.
std::int64_t matchScore(const PropertyDictionary& display, const IOregService& candidate);

/// Picks the display's channel. Refuses a weak match (score below 4 and not the same serial number and name), and
/// one that an entry elsewhere fits as well.
ServiceChoice chooseService(const DisplayInfo& display, DisplaySystem& system,
                            const std::vector<IOregService>& candidates);

} // namespace lumenvale
