// SPDX-License-Identifier: MIT
// The system's own brightness functions, for panels that have them. Hardware thread only.
#pragma once

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
};

class NativeBrightness {
public:
    /// Keeps the functions only if there is a handle. Never fails.
    explicit NativeBrightness(NativeFunctions functions);

    /// The display's brightness; none when it cannot be read or is not in 0.0…1.0.
    std::optional<double> read(std::uint32_t displayID) const;

    const NativeFunctions::Setter& setter() const { return functions.setter; }

private:
    NativeFunctions functions;
};

} // namespace lumenvale
