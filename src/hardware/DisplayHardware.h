// SPDX-License-Identifier: MIT
// The one place where the program touches display hardware. Its operations are called on the main thread;
// everything behind them runs on one worker thread, so at most one exchange or native call is in flight at a time.
#pragma once

#include "base/Worker.h"
#include "displays/DisplayHardwareControlling.h"
#include "hardware/HardwareAccess.h"

#include <memory>

namespace lumenvale {

class DisplayEndpoints;

class DisplayHardware final : public DisplayHardwareControlling {
public:
    /// Takes over what it needs; `mainThread` must outlive it.
    DisplayHardware(HardwareAccess access, MainThread& mainThread);
    /// Waits for the transfer or native call that is under way, if any; what would come after it is dropped.
    ~DisplayHardware() override;

    Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) override;
    Task<std::vector<DisplayInfo>> inspectAgain(std::vector<DisplayInfo> displays) override;
    Task<std::map<std::string, double>> currentBrightness(std::vector<std::string> ids) override;
    Task<tl::expected<double, BrightnessError>> setBrightness(double value, std::string id) override;
    Task<std::vector<BrightnessChange>> changeBrightness(
        std::vector<DisplayInfo> displays, std::function<double(const DisplayInfo&)> levelFor) override;

private:
    CancellationToken stopping;
    std::unique_ptr<DisplayEndpoints> endpoints; // the worker's
    MainThread& mainThread;
    Worker worker; // last: its thread uses the others
};

} // namespace lumenvale
