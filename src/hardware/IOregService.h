// SPDX-License-Identifier: MIT
// One I2C channel of the registry with what is known of the display behind it. A value; hardware thread only,
// since it holds the channel open.
#pragma once

#include "base/PropertyList.h"
#include "hardware/AVService.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

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

} // namespace lumenvale
