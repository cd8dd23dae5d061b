// SPDX-License-Identifier: MIT
#include "hardware/HardwareAccess.h"

#include <array>
#include <cstdio>
#include <utility>

namespace lumenvale {

namespace {

using Log = std::function<void(const std::string&)>;

constexpr int stopped = -1; // the status of a transfer that was not made

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

class GuardedAVService final : public AVService {
public:
    GuardedAVService(std::shared_ptr<AVService> service, CancellationToken stopping, Log log)
        : service(std::move(service)), stopping(std::move(stopping)), log(std::move(log))
    {
    }

    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override
    {
        if (stopping.isCancelled())
            return stopped;
        const int status = service->writeI2C(chipAddress, dataAddress, bytes);
        if (log)
            log(transferLine("write", chipAddress, dataAddress, bytes, status));
        return status;
    }
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override
    {
        if (stopping.isCancelled())
            return stopped;
        const int status = service->readI2C(chipAddress, dataAddress, bytes);
        if (log)
            log(transferLine("read ", chipAddress, dataAddress, bytes, status));
        return status;
    }
    Hold tryHold() override { return service->tryHold(); }

private:
    std::shared_ptr<AVService> service;
    CancellationToken stopping;
    Log log; // may be empty
};

class GuardedRoutes final : public DisplayRoutes {
public:
    GuardedRoutes(std::unique_ptr<DisplayRoutes> routes, CancellationToken stopping, Log log)
        : routes(std::move(routes)), stopping(std::move(stopping)), log(std::move(log))
    {
    }

    std::vector<Route> find(const std::vector<DisplayInfo>& displays, std::chrono::milliseconds patience) override
    {
        std::vector<Route> found = routes->find(displays, patience);
        for (std::size_t i = 0; i < found.size(); ++i) {
            std::shared_ptr<AVService>& service = found[i].service;
            if (log)
                log("display " + std::to_string(displays[i].displayID) + (service ? ": channel" : ": no channel"));
            if (service)
                service = std::make_shared<GuardedAVService>(std::move(service), stopping, log);
        }
        return found;
    }
    void beginRound() override { routes->beginRound(); }
    std::optional<std::string> identifier(std::uint32_t displayID) override
    {
        return routes->identifier(displayID);
    }
    std::string obstacle(const DisplayInfo& display) override { return routes->obstacle(display); }
    bool isDark(std::uint32_t displayID) override { return routes->isDark(displayID); }

private:
    std::unique_ptr<DisplayRoutes> routes;
    CancellationToken stopping;
    Log log; // may be empty
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

HardwareAccess guarded(HardwareAccess access)
{
    access.routes = std::make_unique<GuardedRoutes>(std::move(access.routes), access.stopping, access.log);
    if (!access.log)
        return access;
    access.native = logged(std::move(access.native), access.log);
    access.pause = [pause = std::move(access.pause), log = access.log](std::chrono::microseconds time) {
        log("wait " + std::to_string(time.count()) + " us");
        pause(time);
    };
    return access;
}

} // namespace lumenvale
