// SPDX-License-Identifier: MIT
// The DDC/CI messages that the program sends and the one reply that it accepts (VESA DDC/CI Standard 1.1,
// sections 4.3 and 4.4). Pure; any thread.
//
// Get VCP Feature   82 01 code checksum                  checksum: 0x6E XOR all before it
// Set VCP Feature   84 03 code high low checksum         checksum: 0x3F XOR all before it
// Reply to Get      6E 88 02 result code type max-high max-low current-high current-low checksum
//                                                        checksum: 0x50 XOR all before it
//
// The host's address 0x51 travels as the data address in front of a message and is no part of it. Set's seed is
// 0x6E XOR 0x51. Get's leaves 0x51 out on purpose: that is what the monitors in use answer to.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <tl/expected.hpp>

namespace lumenvale {

constexpr std::uint8_t luminanceVcpCode = 0x10;
constexpr std::size_t vcpReplyLength = 11;

/// A feature's values in the monitor's own units; `current` is at most `maximum`, which is not 0.
struct VcpReading {
    std::uint16_t maximum = 0;
    std::uint16_t current = 0;

    bool operator==(const VcpReading& other) const = default;
};

std::array<std::uint8_t, 4> getVcpRequest(std::uint8_t code);
std::array<std::uint8_t, 6> setVcpRequest(std::uint8_t code, std::uint16_t value);

/// True when the last byte is the checksum of the others. False for an empty reply.
bool hasValidChecksum(std::span<const std::uint8_t> reply);

/// False for what comes instead of a reply to the request `message`: a null message (6E 80 BE), or the reply to
/// somebody else's request. Its checksum and its result are not looked at. True after any other message.
bool isReplyTo(std::span<const std::uint8_t> message, std::span<const std::uint8_t> reply);

/// Why a reply cannot be used.
struct VcpFault {
    enum class Kind {
        notAReply, ///< damaged, too short, or something else
        noFeature, ///< the monitor says that it has none of this code
        implausible
    };

    Kind kind = Kind::notAReply;
    VcpReading numbers = {}; ///< of an implausible reply: its maximum is 0, or its current value is above it
};

/// The reading in a reply to a Get request for `code`, when every byte of it is as it must be.
tl::expected<VcpReading, VcpFault> parseVcpReply(std::span<const std::uint8_t> reply, std::uint8_t code);

} // namespace lumenvale
