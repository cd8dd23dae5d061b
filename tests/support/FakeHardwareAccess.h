// SPDX-License-Identifier: MIT
// The hardware thread's surroundings for tests: displays and a registry made of values, and a monitor that speaks
// the real bytes and keeps a record of what crossed the wire.
#pragma once

#include "hardware/DdcMessage.h"
#include "hardware/HardwareAccess.h"
#include "hardware/ServiceDiscovery.h"

#include <deque>
#include <map>
#include <utility>

namespace lumenvale {

using Bytes = std::vector<std::uint8_t>;

/// The bytes with the checksum of a reply behind them.
inline Bytes sealed(Bytes reply)
{
    std::uint8_t checksum = 0x50;
    for (const std::uint8_t byte : reply)
        checksum = static_cast<std::uint8_t>(checksum ^ byte);
    reply.push_back(checksum);
    return reply;
}

/// A valid reply to a luminance request.
inline Bytes luminanceReply(int maximum, int current)
{
    Bytes reply = {0x6E, 0x88, 0x02, 0x00, 0x10, 0x00};
    for (const int value : {maximum >> 8, maximum, current >> 8, current})
        reply.push_back(static_cast<std::uint8_t>(value & 0xFF));
    return sealed(reply);
}

/// A monitor that answers as told. Its log: "write 82 01 10 FD", "read", "wait 10000".
class FakeDdcMonitor final : public AVService {
public:
    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override
    {
        constexpr char digits[] = "0123456789ABCDEF";
        std::string& line = log.emplace_back("write");
        for (const std::uint8_t byte : bytes)
            line += {' ', digits[byte >> 4], digits[byte & 0x0F]};
        wrongAddress = wrongAddress || chipAddress != 0x37 || dataAddress != 0x51;
        int status = 0;
        if (!writeStatuses.empty()) {
            status = writeStatuses.front();
            writeStatuses.pop_front();
        }
        if (status == 0 && acceptsWrites && bytes.size() == 6)
            current = static_cast<std::uint16_t>(bytes[3] << 8 | bytes[4]);
        return status;
    }
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override
    {
        log.emplace_back("read");
        wrongAddress = wrongAddress || chipAddress != 0x37 || dataAddress != 0x51;
        Bytes reply = luminanceReply(maximum, current);
        if (!replies.empty()) {
            reply = replies.front();
            replies.pop_front();
        }
        std::copy_n(reply.begin(), std::min(reply.size(), bytes.size()), bytes.begin());
        return silent ? -1 : 0;
    }
    Hold tryHold() override
    {
        if (busyHolds > 0 && busyHolds-- > 0)
            return nullptr;
        log.emplace_back("hold");
        return Hold(this, [this](void*) { log.emplace_back("let go"); });
    }
    Pause recordingPause()
    {
        return [this](std::chrono::microseconds time) { log.push_back("wait " + std::to_string(time.count())); };
    }

    std::uint16_t maximum = 100;
    std::uint16_t current = 50;
    bool silent = false; ///< reads fail
    bool acceptsWrites = true;
    int busyHolds = 0;             ///< how often another program still has the channel
    std::deque<int> writeStatuses; ///< of the next writes; 0 after these
    std::deque<Bytes> replies;     ///< instead of the true one
    std::vector<std::string> log;
    bool wrongAddress = false;
};

/// Displays by number. What a test changes while a DisplayHardware runs, it changes between two awaited calls.
struct FakeDisplay {
    std::optional<std::string> identifier; ///< none: offline
    Route route;
    float nativeBrightness = -1.0F; ///< below 0: the display has no native brightness
};
using FakeDisplays = std::map<std::uint32_t, FakeDisplay>;

/// Knows of a change of the displays only when a round has begun after it.
class FakeRoutes final : public DisplayRoutes {
public:
    explicit FakeRoutes(std::shared_ptr<FakeDisplays> displays) : displays(std::move(displays)) {}

    std::vector<Route> find(const std::vector<DisplayInfo>& list, std::chrono::milliseconds) override
    {
        beginRound();
        std::vector<Route> routes;
        for (const DisplayInfo& each : list)
            routes.push_back(displays->at(each.displayID).route);
        return routes;
    }
    void beginRound() override { round = *displays; }
    std::optional<std::string> identifier(std::uint32_t displayID) override { return round[displayID].identifier; }

private:
    std::shared_ptr<FakeDisplays> displays;
    FakeDisplays round;
};

/// A tree of devices is a list of these.
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
