// SPDX-License-Identifier: MIT
#include "hardware/DdcMessage.h"

namespace lumenvale {

namespace {

constexpr std::array<std::uint8_t, 2> getHeader = {0x82, 0x01};
constexpr std::uint8_t getSeed = 0x6E;
constexpr std::uint8_t setSeed = 0x6E ^ 0x51;
constexpr std::uint8_t replySeed = 0x50;

std::uint8_t checksum(std::uint8_t seed, std::span<const std::uint8_t> bytes)
{
    for (const std::uint8_t byte : bytes)
        seed = static_cast<std::uint8_t>(seed ^ byte);
    return seed;
}

std::uint16_t bigEndian(std::uint8_t high, std::uint8_t low)
{
    return static_cast<std::uint16_t>(high << 8 | low);
}

} // namespace

std::array<std::uint8_t, 4> getVcpRequest(std::uint8_t code)
{
    std::array<std::uint8_t, 4> message = {getHeader[0], getHeader[1], code, 0};
    message.back() = checksum(getSeed, std::span(message).first(message.size() - 1));
    return message;
}

std::array<std::uint8_t, 6> setVcpRequest(std::uint8_t code, std::uint16_t value)
{
    std::array<std::uint8_t, 6> message = {
        0x84, 0x03, code, static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value & 0xFF), 0};
    message.back() = checksum(setSeed, std::span(message).first(message.size() - 1));
    return message;
}

bool hasValidChecksum(std::span<const std::uint8_t> reply)
{
    return !reply.empty() && checksum(replySeed, reply.first(reply.size() - 1)) == reply.back();
}

bool isReplyTo(std::span<const std::uint8_t> message, std::span<const std::uint8_t> reply)
{
    const bool isGet = message.size() == 4 && message[0] == getHeader[0] && message[1] == getHeader[1];
    if (!isGet)
        return true;
    return reply.size() == vcpReplyLength && reply[1] == 0x88 && reply[2] == 0x02 && reply[4] == message[2];
}

tl::expected<VcpReading, VcpFault> parseVcpReply(std::span<const std::uint8_t> reply, std::uint8_t code)
{
    const bool isReply = reply.size() == vcpReplyLength && hasValidChecksum(reply) && reply[0] == 0x6E &&
                         reply[1] == 0x88 && reply[2] == 0x02 && reply[4] == code;
    if (!isReply)
        return tl::unexpected(VcpFault{VcpFault::Kind::notAReply});
    if (reply[3] != 0x00)
        return tl::unexpected(VcpFault{VcpFault::Kind::noFeature});
    const VcpReading reading{bigEndian(reply[6], reply[7]), bigEndian(reply[8], reply[9])};
    if (reading.maximum == 0 || reading.current > reading.maximum)
        return tl::unexpected(VcpFault{VcpFault::Kind::implausible, reading});
    return reading;
}

} // namespace lumenvale
