// SPDX-License-Identifier: MIT
#include "hardware/HardwareAccess.h"

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

std::string transferLine(const char* verb, std::uint32_t chipAddress, std::uint32_t dataAddress,
                         std::span<const std::uint8_t> bytes, int status)
{
    std::array<char, 48> head{};
    std::snprintf(head.data(), head.size(), "i2c %s chip 0x%02X data 0x%02X:", verb, chipAddress, dataAddress);
    return head.data() + hexadecimal(bytes) + outcome(status);
}

class LoggingAVService final : public AVService {
public:
    LoggingAVService(std::shared_ptr<AVService> service, Log log)
        : service(std::move(service)), log(std::move(log))
    {
    }

    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override
    {
        const int status = service->writeI2C(chipAddress, dataAddress, bytes);
        log(transferLine("write", chipAddress, dataAddress, bytes, status));
        return status;
    }
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override
    {
        const int status = service->readI2C(chipAddress, dataAddress, bytes);
        log(transferLine("read ", chipAddress, dataAddress, bytes, status));
        return status;
    }

private:
    std::shared_ptr<AVService> service;
    Log log;
};

class LoggingRoutes final : public DisplayRoutes {
public:
    LoggingRoutes(std::unique_ptr<DisplayRoutes> routes, Log log) : routes(std::move(routes)), log(std::move(log))
    {
    }

    std::vector<Route> find(const std::vector<DisplayInfo>& displays) override
    {
        std::vector<Route> found = routes->find(displays);
        for (std::size_t i = 0; i < found.size(); ++i) {
            std::shared_ptr<AVService>& service = found[i].service;
            log("display " + std::to_string(displays[i].displayID) + (service ? ": channel" : ": no channel"));
            if (service)
                service = std::make_shared<LoggingAVService>(std::move(service), log);
        }
        return found;
    }
    void beginRound() override { routes->beginRound(); }
    std::optional<std::string> identifier(std::uint32_t displayID) override
    {
        return routes->identifier(displayID);
    }
    bool isDark(std::uint32_t displayID) override { return routes->isDark(displayID); }

private:
    std::unique_ptr<DisplayRoutes> routes;
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
    access.routes = std::make_unique<LoggingRoutes>(std::move(access.routes), access.log);
    access.native = logged(std::move(access.native), access.log);
    access.pause = [pause = std::move(access.pause), log = access.log](std::chrono::microseconds time) {
        log("wait " + std::to_string(time.count()) + " us");
        pause(time);
    };
    return access;
}

} // namespace lumenvale
