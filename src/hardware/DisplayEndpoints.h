// SPDX-License-Identifier: MIT
// The work behind DisplayHardware: probes displays, remembers how each is reached, reads and writes brightness.
// Belongs to DisplayHardware and runs on its worker; blocks for as long as the displays take.
#pragma once

#include "base/Worker.h"
#include "displays/DisplayInfo.h"
#include "hardware/HardwareAccess.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <vector>

namespace lumenvale {

class DisplayEndpoints {
public:
    explicit DisplayEndpoints(HardwareAccess access);

    /// Forgets all endpoints, then probes the displays in order. Stops between two displays once `stopping` is
    /// cancelled; the rest then has no endpoints and is missing from the result.
    std::vector<DisplayInfo> inspect(const std::vector<DisplayInfo>& displays, const CancellationToken& stopping);

    /// See DisplayHardwareControlling. Stops between two displays once `token` is cancelled.
    std::map<std::string, double> currentBrightness(const std::vector<std::string>& ids,
                                                    const CancellationToken& token);

    /// See DisplayHardwareControlling. The endpoint keeps the values of the last inspection.
    tl::expected<double, BrightnessError> setBrightness(double value, const std::string& id);

private:
    /// How a display is reached; written by an inspection only.
    struct Endpoint {
        DisplayInfo info;
        std::shared_ptr<AVService> service;
    };

    DisplayInfo probe(DisplayInfo display, const Route& route);
    void readLuminance(DisplayInfo& display, AVService& service) const;
    bool isStillTheSame(const Endpoint& endpoint, const std::string& id) const;
    bool mayWake(const Endpoint& endpoint) const;
    std::optional<double> read(const Endpoint& endpoint) const;
    tl::expected<double, BrightnessError> writeNative(const DisplayInfo& display, double target) const;
    tl::expected<double, BrightnessError> writeDdc(const Endpoint& endpoint, double target) const;

    HardwareAccess access;
    NativeBrightness native;
    std::map<std::string, Endpoint> endpoints;
};

} // namespace lumenvale
