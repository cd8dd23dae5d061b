// SPDX-License-Identifier: MIT
// What the display store and the commands ask of the hardware. Called and answered on the main thread; the work is
// done elsewhere. Destroying a returned task abandons its answer: a write that has begun is finished unless the
// program ends, one that has not begun is dropped.
//
// What belongs together (the write of a value and its verification) is one operation that no other copy of this
// program comes between. An operation waits a few seconds for the others, and fails when they do not let go.
#pragma once

#include "base/Task.h"
#include "displays/DisplayInfo.h"

#include <functional>
#include <map>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

/// What came of `changeBrightness` for one display.
struct BrightnessChange {
    DisplayInfo display; ///< as it was inspected, before the change
    tl::expected<double, BrightnessError> outcome;
};

class DisplayHardwareControlling {
public:
    virtual ~DisplayHardwareControlling() = default;

    /// Probes the displays anew and returns the same records, in the same order, with their hardware fields
    /// (method, brightness, maximum, status and the reported texts) filled in.
    virtual Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) = 0;

    /// Probes these displays anew and leaves the others of the last inspection as they are. Leaves out those whose
    /// picture is off.
    virtual Task<std::vector<DisplayInfo>> inspectAgain(std::vector<DisplayInfo> displays) = 0;

    /// The present brightness of those displays of the last inspection that can be read now, by identifier.
    virtual Task<std::map<std::string, double>> currentBrightness(std::vector<std::string> ids) = 0;

    /// Writes a brightness, reads it back and returns what the display then reports (0.0 to 1.0).
    virtual Task<tl::expected<double, BrightnessError>> setBrightness(double value, std::string id) = 0;

    /// Inspects the displays, and sets each to the level (0.0 to 1.0) that `levelFor` gives for what was found.
    /// For each display that is one operation: no copy of this program changes it between reading and writing.
    /// Calls `levelFor` on another thread.
    virtual Task<std::vector<BrightnessChange>> changeBrightness(
        std::vector<DisplayInfo> displays, std::function<double(const DisplayInfo&)> levelFor) = 0;
};

} // namespace lumenvale
