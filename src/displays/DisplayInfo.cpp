// SPDX-License-Identifier: MIT
#include "displays/DisplayInfo.h"

#include "base/Words.h"

#include <algorithm>
#include <cmath>
#include <ios>
#include <locale>
#include <sstream>

namespace lumenvale {

namespace {

constexpr double nativeStep = 0.001;

/// The number with a decimal point, whatever the user's locale. Negative zero is written as zero.
std::string decimal(double value, int precision, std::ios_base::fmtflags format = {})
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.setf(format, std::ios_base::floatfield);
    text.precision(precision);
    text << value + 0.0;
    return text.str();
}

/// Not finite gives 0; the rest is clamped to 0…1.
double normalised(double value) { return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0.0; }

bool isDdc(const DisplayInfo& display) { return display.method == ControlMethod::ddc; }

/// The display's levels, where they count.
const LevelRange* levelsOf(const DisplayInfo& display)
{
    return display.method == ControlMethod::apple && display.levels ? &*display.levels : nullptr;
}

/// How many of the smallest changes lead from 0.0 to 1.0; 0 where nothing is known of them.
std::uint32_t hardwareUnits(const DisplayInfo& display)
{
    if (isDdc(display))
        return display.maximum;
    const LevelRange* levels = levelsOf(display);
    return levels ? levels->highest - levels->lowest : 0;
}

/// How many hardware units a step is.
double unitsPerStep(const DisplayInfo& display)
{
    return levelsOf(display) ? std::max(std::round(nativeStep * hardwareUnits(display)), 1.0) : 1.0;
}

/// `value` to the nearest of `units`, then changed by so many of them.
double changed(double value, double change, double units)
{
    return std::clamp(std::round(normalised(value) * units) + change, 0.0, units) / units;
}

double signOf(int direction) { return direction < 0 ? -1.0 : direction > 0 ? 1.0 : 0.0; }

int percentageDigits(const DisplayInfo& display)
{
    if (!isDdc(display))
        return 1;
    if (display.maximum <= 100)
        return 0;
    return display.maximum <= 1000 ? 1 : 3;
}

} // namespace

std::string_view rawValue(ControlMethod method)
{
    switch (method) {
    case ControlMethod::apple:
        return "Apple native brightness";
    case ControlMethod::ddc:
        return "DDC/CI hardware backlight";
    case ControlMethod::unavailable:
        break;
    }
    return "Hardware control unavailable";
}

std::string_view methodText(ControlMethod method, const Words& words)
{
    return method == ControlMethod::apple ? words.nativeMethod : rawValue(method);
}

std::string_view description(BrightnessError error)
{
    switch (error) {
    case BrightnessError::disconnected:
        return "The display connection changed. Refresh displays and try again.";
    case BrightnessError::writeFailed:
        return "The display did not accept the brightness command. Check DDC/CI in its on-screen menu.";
    case BrightnessError::readFailed:
        return "The command was sent, but brightness could not be read back. Refresh to retry.";
    case BrightnessError::mismatch:
        break;
    }
    return "The display reported a different brightness. Another app or a monitor preset may be overriding it.";
}

const DisplayInfo* findDisplay(const std::vector<DisplayInfo>& displays, const std::string& id)
{
    const auto found = std::ranges::find(displays, id, &DisplayInfo::id);
    return found == displays.end() ? nullptr : &*found;
}

DisplayInfo* findDisplay(std::vector<DisplayInfo>& displays, const std::string& id)
{
    const auto found = std::ranges::find(displays, id, &DisplayInfo::id);
    return found == displays.end() ? nullptr : &*found;
}

std::string stableIdentifier(const std::optional<std::string>& uuid, std::uint32_t displayID)
{
    return uuid ? *uuid : "display-" + std::to_string(displayID);
}

double quantise(const DisplayInfo& display, double value)
{
    const double clamped = normalised(value);
    const std::uint32_t units = hardwareUnits(display);
    return units == 0 ? clamped : changed(clamped, 0.0, units);
}

double step(int direction, std::optional<std::uint16_t> hardwareUnits, std::optional<double> value)
{
    const double current = value.value_or(0.0);
    if (hardwareUnits && *hardwareUnits != 0)
        return changed(current, signOf(direction), *hardwareUnits);
    return std::clamp(normalised(current) + signOf(direction) * nativeStep, 0.0, 1.0);
}

double step(const DisplayInfo& display, int direction)
{
    if (levelsOf(display))
        return changed(display.brightness.value_or(0.0), signOf(direction) * unitsPerStep(display),
                       hardwareUnits(display));
    return step(direction, isDdc(display) ? std::optional(display.maximum) : std::nullopt, display.brightness);
}

double stepSize(const DisplayInfo& display)
{
    const std::uint32_t units = hardwareUnits(display);
    return units == 0 ? nativeStep : unitsPerStep(display) / units;
}

double adjusted(const DisplayInfo& display, double amount)
{
    const double current = display.brightness.value_or(0.0);
    const double target = quantise(display, current + amount);
    if (amount == 0.0 || target != quantise(display, current))
        return target;
    return step(display, amount < 0.0 ? -1 : 1);
}

std::string percentageText(const DisplayInfo& display) { return percentageText(display, display.brightness); }

std::string percentageText(const DisplayInfo& display, std::optional<double> value)
{
    if (!value)
        return "—";
    return decimal(*value * 100.0, percentageDigits(display), std::ios_base::fixed) + "%";
}

std::string stepSizeText(const DisplayInfo& display)
{
    if (levelsOf(display)) {
        const double count = unitsPerStep(display);
        return decimal(count, 10) + (count > 1 ? " levels (" : " level (") +
               decimal(100.0 * stepSize(display), 4) + " percentage points)";
    }
    if (!isDdc(display))
        return "0.1 percentage points";
    const int units = std::max<int>(display.maximum, 1);
    return "1 hardware unit (" + decimal(100.0 / units, 4) + " percentage points)";
}

std::string rawValueText(const DisplayInfo& display)
{
    if (!display.brightness)
        return "Not available";
    if (const LevelRange* levels = levelsOf(display)) {
        const auto above = static_cast<std::uint32_t>(std::llround(*display.brightness * hardwareUnits(display)));
        return "level " + std::to_string(levels->lowest + above) + " of " + std::to_string(levels->highest);
    }
    if (!isDdc(display))
        return decimal(*display.brightness, 9) + " / 1.0 (Float32)";
    const long units = std::lround(*display.brightness * display.maximum);
    return std::to_string(units) + " / " + std::to_string(display.maximum);
}

std::string rangeText(const DisplayInfo& display)
{
    if (const LevelRange* levels = levelsOf(display))
        return std::to_string(std::uint64_t{hardwareUnits(display)} + 1) + " levels; integer range " +
               std::to_string(levels->lowest) + "–" + std::to_string(levels->highest) + ".";
    if (!isDdc(display))
        return "The API accepts a value from 0 to 1. The panel’s physical step size is not reported.";
    return std::to_string(display.maximum + 1) + " command values; integer range 0–" +
           std::to_string(display.maximum) + ".";
}

} // namespace lumenvale
