// SPDX-License-Identifier: MIT
// The timing of a mode, as the kernel and X servers both describe it (drm_mode.h, the RandR protocol). Pure.
#pragma once

namespace lumenvale {

struct ModeLine {
    double dotClock = 0; ///< pixels a second
    double columns = 0;  ///< of a whole line, blanking included
    double lines = 0;    ///< of a whole picture, likewise
    bool isDoubleScanned = false;
    bool isInterlaced = false;
};

/// In hertz: how often the screen is gone over, twice for each interlaced picture. 0 where the timing is unknown.
inline double refreshRate(const ModeLine& mode)
{
    const double lines = mode.lines * (mode.isDoubleScanned ? 2 : 1) / (mode.isInterlaced ? 2 : 1);
    const double pixels = lines * mode.columns;
    return pixels > 0 ? mode.dotClock / pixels : 0.0;
}

} // namespace lumenvale
