// SPDX-License-Identifier: MIT
// What the display store asks of the hardware. Called and answered on the main thread; the work is done
// elsewhere. Destroying a returned task abandons its answer: a write that has begun is finished, one that has
// not begun is dropped.
#pragma once

#include "base/Task.h"
#include "displays/DisplayInfo.h"

#include <map>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

class DisplayHardwareControlling {
public:
    virtual ~DisplayHardwareControlling() = default;

    /// Probes the displays anew and returns the same records, in the same order, with their hardware fields
    /// (method, brightness, maximum, status and the reported texts) filled in.
    virtual Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) = 0;

    /// The present brightness of those displays of the last inspection that can be read now, by identifier.
    virtual Task<std::map<std::string, double>> currentBrightness(std::vector<std::string> ids) = 0;

    /// Writes a brightness, reads it back and returns what the display then reports (0.0 to 1.0).
    virtual Task<tl::expected<double, BrightnessError>> setBrightness(double value, std::string id) = 0;
};

} // namespace lumenvale
