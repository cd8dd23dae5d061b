// SPDX-License-Identifier: MIT
// Sends a DDC/CI message and fetches its reply, with the waits and repetitions that monitors need. Hardware
// thread; every wait blocks it. A failed transfer, a bad checksum and a reply that is not valid look the same to
// callers.
#pragma once

#include "hardware/AVService.h"
#include "hardware/DdcMessage.h"
#include "hardware/Pause.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

namespace lumenvale {

constexpr std::uint32_t ddcChipAddress = 0x37; ///< the monitor's 7-bit I2C address
constexpr std::uint32_t ddcDataAddress = 0x51; ///< the host's address, in front of every message

struct DdcTiming {
    std::chrono::microseconds writeWait{10'000}; ///< before every write
    unsigned writeCycles = 2;                    ///< writes of the message in an attempt; 0 means 1
    std::chrono::microseconds readWait{50'000};  ///< between the last write and the read
    unsigned retries = 4;                        ///< attempts after the first; fewer than 254
    std::chrono::microseconds retryWait{20'000}; ///< after every failed attempt, the last one included
};

/// Sends `message` until an attempt succeeds. With an empty `reply` that takes a last write that succeeds;
/// otherwise also a read that fills `reply` and whose last byte is its checksum. `reply` is not cleared between
/// attempts.
bool exchange(AVService& service, std::span<const std::uint8_t> message, std::span<std::uint8_t> reply,
              const DdcTiming& timing, const Pause& pause);

/// Reads a feature. None without a service (and without any traffic) or without a valid reply.
std::optional<VcpReading> readVcp(AVService* service, std::uint8_t code, const DdcTiming& timing,
                                  const Pause& pause);

/// Writes a feature. False without a service (and without any traffic).
bool writeVcp(AVService* service, std::uint8_t code, std::uint16_t value, const DdcTiming& timing,
              const Pause& pause);

} // namespace lumenvale
