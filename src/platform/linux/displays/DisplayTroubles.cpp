// SPDX-License-Identifier: MIT
#include "platform/linux/displays/DisplayTroubles.h"

#include "hardware/DdcMessage.h"

#include <cerrno>
#include <utility>

namespace lumenvale {

namespace {

using Kind = DisplayTrouble::Kind;

std::uint16_t bigEndian(std::span<const std::uint8_t> bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
}

/// What is wrong with a reply; none when it can be used.
std::optional<DisplayTrouble> troubleWith(std::span<const std::uint8_t> reply)
{
    constexpr std::size_t opcode = 2, result = 3, maximum = 6, current = 8; // positions, see parseVcpReply
    if (reply.size() != vcpReplyLength || !hasValidChecksum(reply) || reply[opcode] != 0x02)
        return DisplayTrouble{Kind::unclear};
    if (reply[result] != 0)
        return DisplayTrouble{Kind::withoutValue};
    const DisplayTrouble numbers{Kind::implausible, 0, bigEndian(reply, maximum), bigEndian(reply, current)};
    const bool isUsable = numbers.maximum > 0 && numbers.current <= numbers.maximum;
    return isUsable ? std::nullopt : std::optional(numbers);
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
        const auto trouble = error == 0        ? troubleWith(bytes)
                             : error == EPROTO ? std::optional(DisplayTrouble{Kind::unclear})
                                               : std::optional(DisplayTrouble{Kind::silent, error});
        if (trouble)
            troubles->note(displayID, *trouble);
        else
            troubles->clear(displayID);
        return error;
    }

    Hold tryHold() override { return channel->tryHold(); }

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
