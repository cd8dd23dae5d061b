// SPDX-License-Identifier: MIT
// The work behind DisplayHardware: probes displays, remembers how each is reached, reads and writes brightness.
// Belongs to DisplayHardware and runs on its worker; blocks for as long as the displays take.
#pragma once

#include "base/Worker.h"
#include "displays/DisplayHardwareControlling.h"
#include "hardware/HardwareAccess.h"

#include <chrono>
#include <functional>
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

    /// Forgets all endpoints, then probes the displays in order. Stops between two displays once the access is
    /// stopping; the rest then has no endpoints and is missing from the result.
    std::vector<DisplayInfo> inspect(const std::vector<DisplayInfo>& displays);

    /// The same without forgetting the endpoints of other displays, and without waiting for long: the user has not
    /// asked for it. Leaves out displays whose picture is off.
    std::vector<DisplayInfo> inspectAgain(std::vector<DisplayInfo> displays);

    /// See DisplayHardwareControlling. Stops between two displays once `token` is cancelled.
    std::map<std::string, double> currentBrightness(const std::vector<std::string>& ids,
                                                    const CancellationToken& token);

    /// See DisplayHardwareControlling. The endpoint keeps the values of the last inspection.
    tl::expected<double, BrightnessError> setBrightness(double value, const std::string& id);

    /// See DisplayHardwareControlling. Forgets all endpoints first, and stops as `inspect` does.
    std::vector<BrightnessChange> changeBrightness(const std::vector<DisplayInfo>& displays,
                                                   const std::function<double(const DisplayInfo&)>& levelFor);

private:
    /// How a display is reached; written by an inspection only.
    struct Endpoint {
        DisplayInfo info;
        std::shared_ptr<AVService> service;
    };

    /// What a probe found, and what keeps others from the display since; null where another did not let go of it.
    struct Probe {
        DisplayInfo display;
        Hold hold;
    };

    std::vector<DisplayInfo> probeAll(const std::vector<DisplayInfo>& displays,
                                      std::chrono::milliseconds patience);
    Probe probe(DisplayInfo display, const Route& route, std::chrono::milliseconds patience);
    void readLuminance(DisplayInfo& display, AVService& service) const;
    Hold holdNative(const DisplayInfo& display, std::chrono::milliseconds patience) const;
    Hold holdChannel(AVService& service, std::chrono::milliseconds patience) const;
    bool isStillTheSame(const Endpoint& endpoint, const std::string& id) const;
    bool mayWake(const Endpoint& endpoint) const;
    std::optional<double> read(const Endpoint& endpoint) const;
    tl::expected<double, BrightnessError> write(const Endpoint& endpoint, double value,
                                                const std::string& id) const;
    tl::expected<double, BrightnessError> writeNative(const DisplayInfo& display, double target) const;
    tl::expected<double, BrightnessError> writeDdc(const Endpoint& endpoint, double target) const;

    HoldWait holdWait;
    HardwareAccess access;
    NativeBrightness native;
    std::map<std::string, Endpoint> endpoints;
};

} // namespace lumenvale
