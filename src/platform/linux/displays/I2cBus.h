// SPDX-License-Identifier: MIT
// An external display's I2C channel over the kernel's device file. The file is open only during a transaction, or
// while the bus is held: an open one would keep the kernel from taking an unplugged hub's channels apart. Hardware
// thread only.
#pragma once

#include "hardware/AVService.h"
#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/I2cAdapter.h"
#include "platform/linux/displays/I2cDriver.h"

#include <cstdint>
#include <memory>
#include <span>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

class I2cBus final : public AVService {
public:
    I2cBus(I2cAdapter adapter, std::shared_ptr<I2cDriver> driver);

    /// The system's error numbers are the failure codes. Writes `dataAddress` in front of `bytes`.
    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override;
    /// A plain read; `dataAddress` has no place in it. EPROTO when the message written last was a request and what
    /// was read is no reply to it.
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override;

    /// Holds the device file's advisory lock, which other programs respect too. A transaction without a hold fails
    /// with EAGAIN while one of them has it.
    Hold tryHold() override;

    /// The EDID base block at address 0x50; sends one byte, the offset 0. The error is the system's number.
    tl::expected<EdidBlock, int> readEdid();

private:
    int transact(std::span<const I2cMessage> messages);
    tl::expected<std::shared_ptr<FileDescriptor>, int> open();

    I2cAdapter adapter;
    std::shared_ptr<I2cDriver> driver;
    std::weak_ptr<FileDescriptor> held;
    std::vector<std::uint8_t> lastMessage; ///< the one written last, without `dataAddress`
};

} // namespace lumenvale
