// SPDX-License-Identifier: MIT
// How the displays are reached, as the platform finds it out. Hardware thread only.
#pragma once

#include "displays/DisplayInfo.h"
#include "hardware/AVService.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

/// A number of pixels in each direction.
struct PixelSize {
    std::int64_t width = 0;
    std::int64_t height = 0;

    bool operator==(const PixelSize& other) const = default;
};

/// The way to one display, and what is known of the display on that way. Texts are empty where nothing is known.
struct Route {
    std::shared_ptr<AVService> service; ///< null: no I2C channel, or none that is certainly this display's
    std::string upstream;               ///< the connection at the machine: "DP"
    std::string downstream;             ///< the connection at the display
    std::string serialNumber;           ///< as text, the one on the display's label
    std::optional<PixelSize> nativeFormat;
};

class DisplayRoutes {
public:
    virtual ~DisplayRoutes() = default;

    /// Finds the routes of `displays`; one for each, in the same order. Waits for others that hold what it needs,
    /// for up to `patience` each. Begins a round.
    virtual std::vector<Route> find(const std::vector<DisplayInfo>& displays,
                                    std::chrono::milliseconds patience) = 0;

    /// Begins a round of readings, or a write. What is asked from here to the next round, of the native functions
    /// too, may be answered from one look at the system that is taken now.
    virtual void beginRound() = 0;

    /// The identifier (see stableIdentifier) of the display that is attached under this number; none when none is.
    /// It tells whether a display was replaced behind its number.
    virtual std::optional<std::string> identifier(std::uint32_t displayID) = 0;

    /// What keeps a display from being read or set, after it failed: cause and remedy in whole sentences. Empty
    /// where no more is known than that it failed.
    virtual std::string obstacle(const DisplayInfo&) { return {}; }

    /// True while the display's picture is switched off to save power, at this very moment: being read could wake
    /// it. False where the system does not tell.
    virtual bool isDark(std::uint32_t) { return false; }
};

} // namespace lumenvale
