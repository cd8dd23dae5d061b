// SPDX-License-Identifier: MIT
// The system's own brightness functions, for panels that have them. Hardware thread only.
#pragma once

#include "displays/DisplayInfo.h"
#include "hardware/Hold.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace lumenvale {

/// What a platform supplies. Brightness is a fraction from 0.0 to 1.0; status 0 means success.
struct NativeFunctions {
    using Getter = std::function<std::int32_t(std::uint32_t displayID, float* brightness)>;
    using Setter = std::function<std::int32_t(std::uint32_t displayID, float brightness)>;

    std::shared_ptr<void> handle; ///< closes the library when the last owner goes; null: nothing was loaded
    Getter getter;                ///< may be empty
    Setter setter;                ///< may be empty
    /// The levels of the display's scale; none, or empty, where they are not known.
    std::function<std::optional<LevelRange>(std::uint32_t displayID)> levels;
    /// Keeps other copies of this program from setting the display. Never waits: null while one has it. May be
    /// empty.
    std::function<Hold(std::uint32_t displayID)> tryHold;
};

class NativeBrightness {
public:
    /// Keeps the functions only if there is a handle. Never fails.
    explicit NativeBrightness(NativeFunctions functions);

    /// The display's brightness; none when it cannot be read or is not in 0.0…1.0.
    std::optional<double> read(std::uint32_t displayID) const;

    std::optional<LevelRange> levels(std::uint32_t displayID) const;
    /// See NativeFunctions.
    Hold tryHold(std::uint32_t displayID) const;

    const NativeFunctions::Setter& setter() const { return functions.setter; }

private:
    NativeFunctions functions;
};

} // namespace lumenvale
