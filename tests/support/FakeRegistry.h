// SPDX-License-Identifier: MIT
// A tree of devices and what the system says of its displays, made of values.
#pragma once

#include "hardware/ServiceDiscovery.h"

#include <map>
#include <utility>

namespace lumenvale {

struct FakeEntry {
    std::string name;
    PropertyDictionary properties;
    std::string path;
    std::shared_ptr<AVService> service;
};

class FakeRegistry final : public ServiceRegistry {
public:
    explicit FakeRegistry(std::vector<FakeEntry> entries) : entries(std::move(entries)) {}

    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override
    {
        for (const FakeEntry& entry : entries)
            visit(Entry(entry));
    }

private:
    class Entry final : public RegistryEntry {
    public:
        explicit Entry(const FakeEntry& entry) : entry(entry) {}
        std::string name() const override { return entry.name; }
        std::optional<PropertyValue> property(const std::string& key) const override
        {
            const PropertyValue* value = find(entry.properties, key);
            return value ? std::optional(*value) : std::nullopt;
        }
        std::string path() const override { return entry.path; }
        std::shared_ptr<AVService> createAVService() const override { return entry.service; }

    private:
        const FakeEntry& entry;
    };

    std::vector<FakeEntry> entries;
};

/// Every display that it knows is online and has no UUID.
class FakeDisplaySystem final : public DisplaySystem {
public:
    using Displays = std::map<std::uint32_t, PropertyDictionary>;

    explicit FakeDisplaySystem(Displays displays) : displays(std::move(displays)) {}

    std::optional<PropertyDictionary> informationDictionary(std::uint32_t displayID) override
    {
        return displays.contains(displayID) ? std::optional(displays.at(displayID)) : std::nullopt;
    }
    bool isOnline(std::uint32_t displayID) override { return displays.contains(displayID); }
    std::optional<std::string> uuid(std::uint32_t) override { return std::nullopt; }

private:
    Displays displays;
};

} // namespace lumenvale
