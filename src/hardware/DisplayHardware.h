// SPDX-License-Identifier: MIT
// The one place where the program touches display hardware. Its public operations are called on the main
// thread; everything behind them runs on one worker thread, so at most one exchange or native call is in
// flight at a time.
#pragma once

#include "base/Worker.h"
#include "displays/DisplayHardwareControlling.h"
#include "hardware/DisplaySystem.h"
#include "hardware/NativeBrightness.h"
#include "hardware/Pause.h"
#include "hardware/ServiceRegistry.h"

#include <memory>

namespace lumenvale {

/// What the hardware thread works with.
struct HardwareAccess {
    std::unique_ptr<ServiceRegistry> registry;
    std::unique_ptr<DisplaySystem> displaySystem;
    NativeFunctions native;
    Pause pause = blockingPause();
};

class DisplayHardware final : public DisplayHardwareControlling {
public:
    /// Takes over what it needs; `mainThread` must outlive it.
    DisplayHardware(HardwareAccess access, MainThread& mainThread);
    /// Waits for the exchange in flight, if any.
    ~DisplayHardware() override;

    Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) override;
    Task<std::map<std::string, double>> currentBrightness(std::vector<std::string> ids) override;
    Task<tl::expected<double, BrightnessError>> setBrightness(double value, std::string id) override;

private:
    // to be completed
};

} // namespace lumenvale
