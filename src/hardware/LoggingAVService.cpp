// SPDX-License-Identifier: MIT
#include "hardware/LoggingAVService.h"

#include <array>
#include <cstdio>
#include <utility>

namespace lumenvale {

namespace {

using Log = std::function<void(const std::string&)>;

std::string hexadecimal(std::span<const std::uint8_t> bytes)
{
    std::string text;
    for (const std::uint8_t byte : bytes) {
        std::array<char, 4> digits{};
        std::snprintf(digits.data(), digits.size(), " %02X", byte);
        text += digits.data();
    }
    return text;
}

std::string outcome(std::int32_t status)
{
    return status == 0 ? " -> 0" : " -> failed (" + std::to_string(status) + ")";
}

std::string transferLine(const char* verb, std::uint32_t chip, std::uint32_t data,
                         std::span<const std::uint8_t> bytes, int status)
{
    std::array<char, 48> head{};
    std::snprintf(head.data(), head.size(), "i2c %s chip 0x%02X data 0x%02X:", verb, chip, data);
    return head.data() + hexadecimal(bytes) + outcome(status);
}

class LoggingAVService final : public AVService {
public:
    LoggingAVService(std::shared_ptr<AVService> wrapped, Log sink)
        : service(std::move(wrapped)), log(std::move(sink))
    {
    }

    int writeI2C(std::uint32_t chip, std::uint32_t data, std::span<const std::uint8_t> bytes) override
    {
        const int status = service->writeI2C(chip, data, bytes);
        log(transferLine("write", chip, data, bytes, status));
        return status;
    }
    int readI2C(std::uint32_t chip, std::uint32_t data, std::span<std::uint8_t> bytes) override
    {
        const int status = service->readI2C(chip, data, bytes);
        log(transferLine("read ", chip, data, bytes, status));
        return status;
    }

private:
    std::shared_ptr<AVService> service;
    Log log;
};

class LoggingEntry final : public RegistryEntry {
public:
    LoggingEntry(const RegistryEntry& wrapped, const Log& sink) : entry(wrapped), log(sink) {}

    std::string name() const override { return entry.name(); }
    std::optional<PropertyValue> property(const std::string& key) const override { return entry.property(key); }
    std::string path() const override { return entry.path(); }
    std::shared_ptr<AVService> createAVService() const override
    {
        auto service = entry.createAVService();
        log("open " + entry.name() + " " + entry.path() + (service ? "" : " failed"));
        return service ? std::make_shared<LoggingAVService>(std::move(service), log) : nullptr;
    }

private:
    const RegistryEntry& entry;
    const Log& log;
};

class LoggingRegistry final : public ServiceRegistry {
public:
    LoggingRegistry(std::unique_ptr<ServiceRegistry> wrapped, Log sink)
        : registry(std::move(wrapped)), log(std::move(sink))
    {
    }

    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override
    {
        registry->forEachEntry([&](const RegistryEntry& entry) { visit(LoggingEntry(entry, log)); });
    }

private:
    std::unique_ptr<ServiceRegistry> registry;
    Log log;
};

NativeFunctions logged(NativeFunctions functions, const Log& log)
{
    if (functions.getter) {
        functions.getter = [call = std::move(functions.getter), log](std::uint32_t displayID, float* value) {
            const std::int32_t status = call(displayID, value);
            log("native read display " + std::to_string(displayID) + ":" +
                (status == 0 ? " " + std::to_string(*value) : "") + outcome(status));
            return status;
        };
    }
    if (functions.setter) {
        functions.setter = [call = std::move(functions.setter), log](std::uint32_t displayID, float value) {
            const std::int32_t status = call(displayID, value);
            log("native write display " + std::to_string(displayID) + ": " + std::to_string(value) +
                outcome(status));
            return status;
        };
    }
    return functions;
}

} // namespace

HardwareAccess withLogging(HardwareAccess access)
{
    if (!access.log)
        return access;
    access.registry = std::make_unique<LoggingRegistry>(std::move(access.registry), access.log);
    access.native = logged(std::move(access.native), access.log);
    access.pause = [pause = std::move(access.pause), log = access.log](std::chrono::microseconds time) {
        log("wait " + std::to_string(time.count()) + " us");
        pause(time);
    };
    return access;
}

} // namespace lumenvale
