// SPDX-License-Identifier: MIT
// Says in plain words why a display cannot be controlled on this Mac. Reads the I/O registry and the displays'
// dictionaries; sends nothing to a monitor. Main thread.
#pragma once

#include "displays/Diagnostics.h"

namespace lumenvale {

class MacDiagnostics final : public Diagnostics {
public:
    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override;
};

} // namespace lumenvale
