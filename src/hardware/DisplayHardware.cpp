// SPDX-License-Identifier: MIT
#include "hardware/DisplayHardware.h"

#include "hardware/DisplayEndpoints.h"

#include <utility>

namespace lumenvale {

DisplayHardware::DisplayHardware(HardwareAccess access, MainThread& mainThread)
    : stopping(access.stopping), endpoints(std::make_unique<DisplayEndpoints>(std::move(access))),
      mainThread(mainThread)
{
}

DisplayHardware::~DisplayHardware() { stopping.cancel(); }

// These are ordinary functions that return a task, so that their lambdas are none of a coroutine's temporaries.

Task<std::vector<DisplayInfo>> DisplayHardware::inspect(std::vector<DisplayInfo> displays)
{
    // Goes on when its caller goes away: displays that it leaves out could not be written until the next one.
    return runOnWorker<std::vector<DisplayInfo>>(
        worker, mainThread,
        [this, list = std::move(displays)](const CancellationToken&) { return endpoints->inspect(list); });
}

Task<std::vector<DisplayInfo>> DisplayHardware::inspectAgain(std::vector<DisplayInfo> displays)
{
    return runOnWorker<std::vector<DisplayInfo>>(
        worker, mainThread,
        [this, list = std::move(displays)](const CancellationToken&) { return endpoints->inspectAgain(list); });
}

Task<std::map<std::string, double>> DisplayHardware::currentBrightness(std::vector<std::string> ids)
{
    return runOnWorker<std::map<std::string, double>>(
        worker, mainThread, [this, list = std::move(ids)](const CancellationToken& token) {
            return endpoints->currentBrightness(list, token);
        });
}

Task<tl::expected<double, BrightnessError>> DisplayHardware::setBrightness(double value, std::string id)
{
    return runOnWorker<tl::expected<double, BrightnessError>>(
        worker, mainThread, [this, value, key = std::move(id)](const CancellationToken&) {
            return endpoints->setBrightness(value, key);
        });
}

Task<std::vector<BrightnessChange>> DisplayHardware::changeBrightness(
    std::vector<DisplayInfo> displays, std::function<double(const DisplayInfo&)> levelFor)
{
    return runOnWorker<std::vector<BrightnessChange>>(
        worker, mainThread,
        [this, list = std::move(displays), level = std::move(levelFor)](const CancellationToken&) {
            return endpoints->changeBrightness(list, level);
        });
}

} // namespace lumenvale
