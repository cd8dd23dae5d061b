// SPDX-License-Identifier: MIT
// An external display's I2C channel, over IOAVService. Hardware thread only.
#pragma once

#include "hardware/AVService.h"
#include "platform/macos/displays/PrivateInterfaces.h"
#include "platform/macos/foundation/MacReferences.h"

#include <functional>
#include <memory>

namespace lumenvale {

class MacAVService final : public AVService {
public:
    /// The channel that a registry entry stands for; null when the system does not open it. `holder` is its
    /// `tryHold`: the system has no lock for a channel.
    static std::shared_ptr<AVService> open(io_service_t entry, std::function<Hold()> holder);

    MacAVService(CFReference<IOAVServiceRef> service, std::function<Hold()> holder);

    /// Codes are IOReturn.
    int writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                 std::span<const std::uint8_t> bytes) override;
    int readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes) override;
    Hold tryHold() override { return holder(); }

private:
    CFReference<IOAVServiceRef> service;
    std::function<Hold()> holder;
};

} // namespace lumenvale
