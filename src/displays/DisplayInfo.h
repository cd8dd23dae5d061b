// SPDX-License-Identifier: MIT
// The value that the whole program passes around for one connected display, and the rules that all who use it
// share: quantising, stepping and the texts shown to the user. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumenvale {

struct Words;

/// How a display's brightness is controlled.
enum class ControlMethod { apple, ddc, unavailable };

/// The method's name as `list --json` writes it, the same on every system.
std::string_view rawValue(ControlMethod method);

/// The text shown to the user.
std::string_view methodText(ControlMethod method, const Words& words);

/// Why a brightness could not be set or confirmed.
enum class BrightnessError { disconnected, writeFailed, readFailed, mismatch };

/// A whole sentence for the user.
std::string_view description(BrightnessError error);

/// The levels of a panel's brightness scale as its driver counts them. The lowest is 0.0, the highest 1.0.
struct LevelRange {
    std::uint32_t lowest = 0;
    std::uint32_t highest = 1; ///< above `lowest`

    bool operator==(const LevelRange& other) const = default;
};

struct DisplayInfo {
    std::string id;              ///< the display's UUID in canonical form, or "display-" and its number
    std::uint32_t displayID = 0; ///< the system's number; valid only while connected
    std::string name;
    bool isBuiltIn = false;
    bool isMain = false;
    std::uint32_t vendor = 0;
    std::uint32_t model = 0;
    std::uint32_t serial = 0;
    std::int64_t pixelWidth = 0; ///< of the current mode; 0 without one
    std::int64_t pixelHeight = 0;
    std::int64_t logicalWidth = 0; ///< of the screen's frame, in points
    std::int64_t logicalHeight = 0;
    double refreshRate = 0.0; ///< hertz; 0 where the system reports none

    std::string nativeResolution = "Not reported";
    std::string connection = "Not reported";
    std::string hardwareSerial = "Not reported";
    ControlMethod method = ControlMethod::unavailable;
    std::optional<double> brightness; ///< 0.0 to 1.0
    std::uint16_t maximum = 100;      ///< of the DDC/CI luminance scale; without meaning for other methods
    std::optional<LevelRange> levels; ///< of a native display whose system tells them; none for other methods
    std::string status = "Checking hardware…";
    std::optional<std::string> error; ///< of the last write, while it is to be read
    bool isErrorExplained = false;    ///< the error names what keeps the display from being set, and the remedy

    bool operator==(const DisplayInfo& other) const = default;
};

/// The display with this identifier, or null. Good until the list changes.
const DisplayInfo* findDisplay(const std::vector<DisplayInfo>& displays, const std::string& id);
DisplayInfo* findDisplay(std::vector<DisplayInfo>& displays, const std::string& id);

/// `uuid` where the system gives one, else "display-" and the decimal display number.
std::string stableIdentifier(const std::optional<std::string>& uuid, std::uint32_t displayID);

/// The nearest brightness that the display can take: not finite gives 0, everything is clamped to 0…1, and the
/// value becomes a whole multiple of 1/maximum on a DDC display, and one of its levels on a native display that
/// has levels (halves away from zero).
double quantise(const DisplayInfo& display, double value);

/// One step from `value` (0.0 when absent) in the direction of the sign of `direction`: one of `hardwareUnits`
/// when given and not 0, else 0.001. Clamped to 0…1.
double step(int direction, std::optional<std::uint16_t> hardwareUnits, std::optional<double> value);

/// The same with the display's own units and brightness. On a native display with levels a step is 0.001 to the
/// nearest level, and at least one level.
double step(const DisplayInfo& display, int direction);

/// What a step away from the ends changes.
double stepSize(const DisplayInfo& display);

/// The display's brightness (0.0 when absent) changed by `amount` and quantised. Moves by at least one step unless
/// `amount` is 0, so that repeating a small change reaches the end of a coarse scale too.
double adjusted(const DisplayInfo& display, double amount);

/// "42%", with as many digits as the display's scale has; "—" while the brightness is unknown.
std::string percentageText(const DisplayInfo& display);

/// The percentage that `value` shows as on this display.
std::string percentageText(const DisplayInfo& display, std::optional<double> value);

/// How far the smallest change moves: "1 hardware unit (0.3922 percentage points)".
std::string stepSizeText(const DisplayInfo& display);

/// The brightness in the hardware's own numbers: "43 / 100"; "Not available" while it is unknown.
std::string rawValueText(const DisplayInfo& display);

/// Which values the hardware takes, as a sentence.
std::string rangeText(const DisplayInfo& display);

} // namespace lumenvale
