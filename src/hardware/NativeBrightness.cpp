// SPDX-License-Identifier: MIT
#include "hardware/NativeBrightness.h"

#include <utility>

namespace lumenvale {

NativeBrightness::NativeBrightness(NativeFunctions functions)
{
    if (functions.handle)
        this->functions = std::move(functions);
}

std::optional<double> NativeBrightness::read(std::uint32_t displayID) const
{
    if (!functions.getter)
        return std::nullopt;
    float value = 0.0F;
    if (functions.getter(displayID, &value) != 0)
        return std::nullopt;
    const bool isFraction = value >= 0.0F && value <= 1.0F; // false for NaN
    return isFraction ? std::optional<double>(value) : std::nullopt;
}

std::optional<LevelRange> NativeBrightness::levels(std::uint32_t displayID) const
{
    return functions.levels ? functions.levels(displayID) : std::nullopt;
}

Hold NativeBrightness::tryHold(std::uint32_t displayID) const
{
    return functions.tryHold ? functions.tryHold(displayID) : holdOfNothing();
}

} // namespace lumenvale
