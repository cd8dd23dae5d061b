// SPDX-License-Identifier: MIT
// The hardware thread's surroundings for tests: a registry and displays made of values, a channel with a monitor
// behind it that speaks the real bytes, and a record of everything that was asked of them.
#pragma once

#include "hardware/DdcMessage.h"
#include "hardware/HardwareAccess.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace lumenvale {

using Bytes = std::vector<std::uint8_t>;

/// A valid reply to a luminance request.
inline Bytes luminanceReply(std::uint16_t maximum, std::uint16_t current)
{
    Bytes reply = {0x6E, 0x88, 0x02, 0x00, 0x10, 0x00};
    for (const std::uint16_t value : {maximum, current}) {
        reply.push_back(static_cast<std::uint8_t>(value >> 8));
        reply.push_back(static_cast<std::uint8_t>(value & 0xFF));
    }
    std::uint8_t checksum = 0x50;
    for (const std::uint8_t byte : reply)
        checksum = static_cast<std::uint8_t>(checksum ^ byte);
    reply.push_back(checksum);
    return reply;
}

/// A monitor that answers as told, and the log of what crossed the wire: "write 82 01 10 FD", "read", "wait
/// 10000".
class FakeDdcMonitor final : public AVService {
public:
    int writeI2C(std::uint32_t chip, std::uint32_t data, std::span<const std::uint8_t> bytes) override
    {
        log.push_back("write" + hexadecimal(bytes));
        wrongAddress = wrongAddress || chip != 0x37 || data != 0x51;
        const int status = next(writeStatuses);
        if (status == 0 && acceptsWrites && bytes.size() == 6)
            current = static_cast<std::uint16_t>(bytes[3] << 8 | bytes[4]);
        if (overridesTo)
            current = *overridesTo;
        return status;
    }

    int readI2C(std::uint32_t chip, std::uint32_t data, std::span<std::uint8_t> bytes) override
    {
        log.emplace_back("read");
        wrongAddress = wrongAddress || chip != 0x37 || data != 0x51;
        if (const int status = next(readStatuses))
            return status;
        Bytes reply = luminanceReply(maximum, current);
        if (!replies.empty()) {
            reply = replies.front();
            replies.pop_front();
        }
        for (std::size_t i = 0; i < bytes.size() && i < reply.size(); ++i)
            bytes[i] = reply[i];
        return silent ? -1 : 0;
    }

    Pause recordingPause()
    {
        return [this](std::chrono::microseconds time) { log.push_back("wait " + std::to_string(time.count())); };
    }

    std::uint16_t maximum = 100;
    std::uint16_t current = 50;
    bool silent = false;
    bool acceptsWrites = true;
    std::optional<std::uint16_t> overridesTo;
    std::deque<int> writeStatuses; ///< of the next writes; 0 after these
    std::deque<int> readStatuses;
    std::deque<Bytes> replies; ///< instead of the true one
    std::vector<std::string> log;
    bool wrongAddress = false;

private:
    static int next(std::deque<int>& statuses)
    {
        if (statuses.empty())
            return 0;
        const int status = statuses.front();
        statuses.pop_front();
        return status;
    }
    static std::string hexadecimal(std::span<const std::uint8_t> bytes)
    {
        constexpr char digits[] = "0123456789ABCDEF";
        std::string text;
        for (const std::uint8_t byte : bytes)
            text += {' ', digits[byte >> 4], digits[byte & 0x0F]};
        return text;
    }
};

struct FakeEntry {
    std::string name;
    PropertyDictionary properties;
    std::string path;
    std::shared_ptr<AVService> service;
};

class FakeRegistry final : public ServiceRegistry {
public:
    explicit FakeRegistry(std::vector<FakeEntry> list) : entries(std::move(list)) {}

    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override
    {
        for (const FakeEntry& entry : entries)
            visit(Entry(entry));
    }

    std::vector<FakeEntry> entries;

private:
    class Entry final : public RegistryEntry {
    public:
        explicit Entry(const FakeEntry& shown) : entry(shown) {}
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
};

/// Displays by number. What a test changes while a DisplayHardware runs, it changes between two awaited calls.
class FakeDisplaySystem final : public DisplaySystem {
public:
    struct Display {
        bool online = true;
        std::optional<std::string> uuid;
        std::optional<PropertyDictionary> information;
        float nativeBrightness = -1.0F; ///< below 0: the display has no native brightness
    };
    using Displays = std::map<std::uint32_t, Display>;

    explicit FakeDisplaySystem(std::shared_ptr<Displays> list) : displays(std::move(list)) {}

    std::optional<PropertyDictionary> informationDictionary(std::uint32_t id) override
    {
        return displays->contains(id) ? displays->at(id).information : std::nullopt;
    }
    bool isOnline(std::uint32_t id) override { return displays->contains(id) && displays->at(id).online; }
    std::optional<std::string> uuid(std::uint32_t id) override
    {
        return displays->contains(id) ? displays->at(id).uuid : std::nullopt;
    }

private:
    std::shared_ptr<Displays> displays;
};

} // namespace lumenvale
