// SPDX-License-Identifier: MIT
// The routes to the displays, straight from the kernel's records: a display is a connector, and its channel the
// one I2C bus that is proven to be that connector's (see BusSelection). Hardware thread only.
#pragma once

#include "hardware/DisplayRoutes.h"
#include "platform/linux/displays/DisplaySnapshot.h"
#include "platform/linux/displays/I2cDriver.h"

#include <memory>
#include <string>

namespace lumenvale {

class LinuxRoutes final : public DisplayRoutes {
public:
    /// Takes `snapshot` anew whenever a round begins. `wait` says how to wait for programs that have a bus.
    LinuxRoutes(std::shared_ptr<DisplaySnapshot> snapshot, std::shared_ptr<I2cDriver> driver, HoldWait wait);

    std::vector<Route> find(const std::vector<DisplayInfo>& displays) override;
    void beginRound() override { snapshot->take(); }
    std::optional<std::string> identifier(std::uint32_t displayID) override;
    bool isDark(std::uint32_t displayID) override;

private:
    std::shared_ptr<DisplaySnapshot> snapshot;
    std::shared_ptr<I2cDriver> driver;
    HoldWait wait;
};

} // namespace lumenvale
