// SPDX-License-Identifier: MIT
// A simulated monitor at the far end of an I2C channel: takes DDC/CI messages byte by byte, checks them as
// monitors do, and answers from its file. Hardware thread only.
#pragma once

#include "hardware/AVService.h"
#include "hardware/Pause.h"
#include "platform/simulated/SimulatedMonitor.h"

#include <array>
#include <optional>

namespace lumenvale {

class SimulatedService final : public AVService {
public:
    SimulatedService(SimulatedMonitor monitor, Pause pause) : monitor(std::move(monitor)), pause(std::move(pause))
    {
    }

    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override;
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override;
    Hold tryHold() override;

private:
    std::optional<DdcControl> acknowledge(std::uint32_t chipAddress, std::uint32_t dataAddress);
    void setLuminance(const DdcControl& ddc, std::uint16_t value);

    SimulatedMonitor monitor;
    Pause pause;
    std::optional<std::uint8_t> requestedCode; // of the last request, until its reply was read
    std::uint32_t replies = 0;
    std::weak_ptr<void> held;
};

} // namespace lumenvale
