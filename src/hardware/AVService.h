// SPDX-License-Identifier: MIT
// A display's I2C channel, at the level of bytes. On macOS this is an IOAVService, after which it is named.
// Hardware thread only; shared ownership keeps it open.
#pragma once

#include "hardware/Hold.h"

#include <cstdint>
#include <span>

namespace lumenvale {

class AVService {
public:
    virtual ~AVService() = default;

    /// Writes one byte `dataAddress` and then `bytes` to the 7-bit `chipAddress`. In DDC/CI the first byte is the
    /// source address 0x51, which the checksum includes. Returns 0, or the system's failure code.
    virtual int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                         std::span<const std::uint8_t> bytes) = 0;

    /// Fills `bytes` from the 7-bit `chipAddress`. Returns 0, or the system's failure code; what was read before
    /// a failure may be in `bytes`.
    virtual int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) = 0;

    /// Keeps other programs from the channel. Never waits: null while one of them has it. While an earlier hold
    /// lasts, that one again.
    virtual Hold tryHold() { return holdOfNothing(); }
};

} // namespace lumenvale
