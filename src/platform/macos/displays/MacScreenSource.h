// SPDX-License-Identifier: MIT
// The screens of NSScreen, with what CoreGraphics knows of each. Main thread.
#pragma once

#include "displays/ScreenSource.h"

namespace lumenvale {

class MacScreenSource final : public ScreenSource {
public:
    std::vector<Screen> screens() override;
    bool isAsleep(std::uint32_t displayID) override;
    std::optional<std::uint32_t> displayAt(Point point) override;
};

} // namespace lumenvale
