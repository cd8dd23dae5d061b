// SPDX-License-Identifier: MIT
// A tree of devices and what the system says of its displays, made of values.
#pragma once

#include "hardware/ServiceDiscovery.h"

#include <map>
#include <utility>

namespace lumenvale {

struct FakeEntry final : RegistryEntry {
    FakeEntry(std::string name, PropertyDictionary properties, std::string path,
              std::shared_ptr<AVService> service)
        : text(std::move(name)), properties(std::move(properties)), place(std::move(path)),
          service(std::move(service))
    {
    }
    std::string name() const override { return text; }
    std::optional<PropertyValue> property(const std::string& key) const override
    {
        const PropertyValue* value = find(properties, key);
        return value ? std::optional(*value) : std::nullopt;
    }
    std::string path() const override { return place; }
    std::shared_ptr<AVService> createAVService() const override { return service; }

    std::string text;
    PropertyDictionary properties;
    std::string place;
    std::shared_ptr<AVService> service;
};

struct FakeRegistry final : ServiceRegistry {
    explicit FakeRegistry(std::vector<FakeEntry> entries) : entries(std::move(entries)) {}
    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override
    {
        for (const FakeEntry& entry : entries)
            visit(entry);
    }

    std::vector<FakeEntry> entries;
};

/// Every display that it knows is online and has no UUID.
struct FakeDisplaySystem final : DisplaySystem {
    using Displays = std::map<std::uint32_t, PropertyDictionary>;

    explicit FakeDisplaySystem(Displays displays) : displays(std::move(displays)) {}
    std::optional<PropertyDictionary> informationDictionary(std::uint32_t id) override { return displays.at(id); }
    bool isOnline(std::uint32_t displayID) override { return displays.contains(displayID); }
    std::optional<std::string> uuid(std::uint32_t) override { return std::nullopt; }

    Displays displays;
};

} // namespace lumenvale
