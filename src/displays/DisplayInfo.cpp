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
    if (!isDdc(display) || display.maximum == 0)
        return clamped;
    return std::round(clamped * display.maximum) / display.maximum;
}

double step(int direction, std::optional<std::uint16_t> hardwareUnits, std::optional<double> value)
{
    const double current = normalised(value.value_or(0.0));
    const double sign = direction < 0 ? -1.0 : direction > 0 ? 1.0 : 0.0;
    if (!hardwareUnits || *hardwareUnits == 0)
        return std::clamp(current + sign * nativeStep, 0.0, 1.0);
    const double units = *hardwareUnits;
    return std::clamp(std::round(current * units) + sign, 0.0, units) / units;
}

double step(const DisplayInfo& display, int direction)
{
    return step(direction, isDdc(display) ? std::optional(display.maximum) : std::nullopt, display.brightness);
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
    if (!isDdc(display))
        return "0.1 percentage points";
    const int units = std::max<int>(display.maximum, 1);
    return "1 hardware unit (" + decimal(100.0 / units, 4) + " percentage points)";
}

std::string rawValueText(const DisplayInfo& display)
{
    if (!display.brightness)
        return "Not available";
    if (!isDdc(display))
        return decimal(*display.brightness, 9) + " / 1.0 (Float32)";
    const long units = std::lround(*display.brightness * display.maximum);
    return std::to_string(units) + " / " + std::to_string(display.maximum);
}

std::string rangeText(const DisplayInfo& display)
{
    if (!isDdc(display))
        return "The API accepts a value from 0 to 1. The panel’s physical step size is not reported.";
    return std::to_string(display.maximum + 1) + " command values; integer range 0–" +
           std::to_string(display.maximum) + ".";
}

} // namespace lumenvale
