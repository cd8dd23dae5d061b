// SPDX-License-Identifier: MIT
#include "hardware/DdcExchange.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

namespace lumenvale {

namespace {

constexpr unsigned attemptLimit = 255;

bool attempt(AVService& service, std::span<const std::uint8_t> message, std::span<std::uint8_t> reply,
             const DdcTiming& timing, const Pause& pause)
{
    int status = 0;
    for (unsigned cycle = 0; cycle < std::max(timing.writeCycles, 1U); ++cycle) {
        pause(timing.writeWait);
        status = service.writeI2C(ddcChipAddress, ddcDataAddress, message);
    }
    if (reply.empty())
        return status == 0;
    pause(timing.readWait);
    return service.readI2C(ddcChipAddress, ddcDataAddress, reply) == 0 && hasValidChecksum(reply);
}

} // namespace

bool exchange(AVService& service, std::span<const std::uint8_t> message, std::span<std::uint8_t> reply,
              const DdcTiming& timing, const Pause& pause)
{
    const bool fits = message.size() <= std::numeric_limits<std::uint32_t>::max();
    if (!fits || timing.retries >= attemptLimit - 1)
        std::abort(); // the caller's defect
    for (unsigned number = 0; number <= timing.retries; ++number) {
        if (attempt(service, message, reply, timing, pause))
            return true;
        pause(timing.retryWait);
    }
    return false;
}

std::optional<VcpReading> readVcp(AVService* service, std::uint8_t code, const DdcTiming& timing,
                                  const Pause& pause)
{
    if (!service)
        return std::nullopt;
    std::array<std::uint8_t, vcpReplyLength> reply{};
    if (!exchange(*service, getVcpRequest(code), reply, timing, pause))
        return std::nullopt;
    const auto reading = parseVcpReply(reply, code);
    return reading ? std::optional(*reading) : std::nullopt;
}

bool writeVcp(AVService* service, std::uint8_t code, std::uint16_t value, const DdcTiming& timing,
              const Pause& pause)
{
    return service && exchange(*service, setVcpRequest(code, value), {}, timing, pause);
}

} // namespace lumenvale
