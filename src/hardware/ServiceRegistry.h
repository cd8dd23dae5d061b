// SPDX-License-Identifier: MIT
// The system's tree of devices, walked in order. Hardware thread only.
#pragma once

#include "base/PropertyList.h"
#include "hardware/AVService.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace lumenvale {

class RegistryEntry {
public:
    virtual ~RegistryEntry() = default;

    virtual std::string name() const = 0;
    /// The property under `key`; none when it is missing or of a kind that has no property-list form.
    virtual std::optional<PropertyValue> property(const std::string& key) const = 0;
    /// The entry's path in the service plane; empty when there is none.
    virtual std::string path() const = 0;
    /// Opens the I2C channel that this entry stands for; null when it cannot be opened.
    virtual std::shared_ptr<AVService> createAVService() const = 0;
};

class ServiceRegistry {
public:
    virtual ~ServiceRegistry() = default;

    /// Calls `visit` for every entry, parents before children, siblings in order. An entry is good only during
    /// its visit. Visits nothing when the walk cannot begin.
    virtual void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) = 0;
};

} // namespace lumenvale
