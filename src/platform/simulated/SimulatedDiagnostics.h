// SPDX-License-Identifier: MIT
// Says which faults the simulated monitors' files ask for, and which files are no monitors. Main thread only.
#pragma once

#include "displays/Diagnostics.h"
#include "platform/simulated/SimulatedFolder.h"

#include <string>

namespace lumenvale {

class SimulatedDiagnostics final : public Diagnostics {
public:
    explicit SimulatedDiagnostics(std::string folder) : folder(std::move(folder)) {}

    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override;

private:
    SimulatedFolder folder;
};

} // namespace lumenvale
