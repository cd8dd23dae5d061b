// SPDX-License-Identifier: MIT
#include "platform/linux/displays/DisplayTroubles.h"

#include <cerrno>
#include <utility>

namespace lumenvale {

namespace {

using Kind = DisplayTrouble::Kind;

/// What is wrong with a reply; none when it can be used.
std::optional<DisplayTrouble> troubleWith(std::span<const std::uint8_t> reply)
{
    const auto reading = parseVcpReply(reply, luminanceVcpCode);
    if (reading)
        return std::nullopt;
    switch (reading.error().kind) {
    case VcpFault::Kind::noFeature:
        return DisplayTrouble{Kind::withoutValue};
    case VcpFault::Kind::implausible:
        return DisplayTrouble{Kind::implausible, 0, reading.error().numbers};
    case VcpFault::Kind::notAReply:
        break;
    }
    return DisplayTrouble{Kind::unclear};
}

/// The null message of DDC/CI, "nothing to say to this": the brightness is locked or not supported.
bool isNullMessage(std::span<const std::uint8_t> reply)
{
    return reply.size() > 2 && reply[0] == 0x6E && reply[1] == 0x80 && reply[2] == 0xBE;
}

class NotingService final : public AVService {
public:
    NotingService(std::shared_ptr<AVService> channel, std::uint32_t displayID,
                  std::shared_ptr<DisplayTroubles> troubles)
        : channel(std::move(channel)), displayID(displayID), troubles(std::move(troubles))
    {
    }

    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override
    {
        const int error = channel->writeI2C(chipAddress, dataAddress, bytes);
        if (error != 0)
            troubles->note(displayID, {Kind::silent, error});
        return error;
    }

    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override
    {
        const int error = channel->readI2C(chipAddress, dataAddress, bytes);
        const auto trouble =
            error == 0 ? troubleWith(bytes)
            : error == EPROTO
                ? std::optional(DisplayTrouble{isNullMessage(bytes) ? Kind::withoutValue : Kind::unclear})
                : std::optional(DisplayTrouble{Kind::silent, error});
        if (trouble)
            troubles->note(displayID, *trouble);
        else
            troubles->clear(displayID);
        return error;
    }

    Hold tryHold() override
    {
        Hold hold = channel->tryHold();
        if (!hold)
            troubles->note(displayID, {Kind::busy});
        return hold;
    }

private:
    std::shared_ptr<AVService> channel;
    std::uint32_t displayID;
    std::shared_ptr<DisplayTroubles> troubles;
};

} // namespace

void DisplayTroubles::note(std::uint32_t displayID, const DisplayTrouble& trouble)
{
    const std::lock_guard lock(mutex);
    noted.insert_or_assign(displayID, trouble);
}

void DisplayTroubles::clear(std::uint32_t displayID)
{
    const std::lock_guard lock(mutex);
    noted.erase(displayID);
}

std::optional<DisplayTrouble> DisplayTroubles::of(std::uint32_t displayID) const
{
    const std::lock_guard lock(mutex);
    const auto found = noted.find(displayID);
    return found == noted.end() ? std::nullopt : std::optional(found->second);
}

std::shared_ptr<AVService> notingTroubles(std::shared_ptr<AVService> channel, std::uint32_t displayID,
                                          std::shared_ptr<DisplayTroubles> troubles)
{
    return std::make_shared<NotingService>(std::move(channel), displayID, std::move(troubles));
}

} // namespace lumenvale
