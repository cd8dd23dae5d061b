// SPDX-License-Identifier: MIT
// An external display's I2C channel over the kernel's device file. The file is open only during a transaction: an
// open one would keep the kernel from taking an unplugged hub's channels apart, and would keep others from the
// bus. Hardware thread only.
#pragma once

#include "hardware/AVService.h"
#include "hardware/Pause.h"
#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/I2cAdapter.h"
#include "platform/linux/displays/I2cDriver.h"

#include <chrono>
#include <memory>
#include <optional>
#include <span>
#include <tl/expected.hpp>

namespace lumenvale {

class I2cBus final : public AVService {
public:
    /// How long a transaction waits for other programs, and how often it looks. They hold the lock for one
    /// exchange, some 50 ms, or for several; the EDID is read once per inspection and is worth the longer wait.
    static constexpr auto lockInterval = std::chrono::milliseconds(5);
    static constexpr int lockAttempts = 20;
    static constexpr int edidLockAttempts = 100;

    I2cBus(I2cAdapter adapter, std::shared_ptr<I2cDriver> driver, Pause pause);

    /// The system's error numbers are the failure codes. Writes `dataAddress` in front of `bytes`.
    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override;
    /// A plain read; `dataAddress` has no place in it.
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override;

    /// The EDID base block at address 0x50; sends one byte, the offset 0. The error is the system's number.
    tl::expected<EdidBlock, int> readEdid();

private:
    int transact(std::span<const I2cMessage> messages, int attempts = lockAttempts);
    int acquire(const FileDescriptor& file, int attempts);

    I2cAdapter adapter;
    std::shared_ptr<I2cDriver> driver;
    Pause pause;
};

} // namespace lumenvale
