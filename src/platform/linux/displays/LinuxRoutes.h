// SPDX-License-Identifier: MIT
// The routes to the displays, straight from the kernel's records: a display is a connector, and its channel the
// one I2C bus that is proven to be that connector's (see BusSelection). Hardware thread only.
#pragma once

#include "hardware/DisplayRoutes.h"
#include "platform/linux/displays/DisplaySnapshot.h"
#include "platform/linux/displays/DisplayTroubles.h"
#include "platform/linux/displays/I2cDriver.h"

#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

class LinuxRoutes final : public DisplayRoutes {
public:
    using Explanation = std::function<std::string(const DisplayInfo&)>;

    /// Takes `snapshot` anew whenever a round begins. `wait` says how to wait for programs that have a bus. Notes
    /// in `troubles` how the channels behave; `explain` says what keeps a display from being controlled.
    LinuxRoutes(std::shared_ptr<DisplaySnapshot> snapshot, std::shared_ptr<I2cDriver> driver, HoldWait wait,
                std::shared_ptr<DisplayTroubles> troubles, Explanation explain);

    std::vector<Route> find(const std::vector<DisplayInfo>& displays, std::chrono::milliseconds patience) override;
    void beginRound() override { snapshot->take(); }
    std::optional<std::string> identifier(std::uint32_t displayID) override;
    std::string obstacle(const DisplayInfo& display) override { return explain ? explain(display) : ""; }
    bool isDark(std::uint32_t displayID) override;

private:
    std::shared_ptr<DisplaySnapshot> snapshot;
    std::shared_ptr<I2cDriver> driver;
    HoldWait wait;
    std::shared_ptr<DisplayTroubles> troubles;
    Explanation explain;
};

} // namespace lumenvale
