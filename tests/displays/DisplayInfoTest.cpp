// SPDX-License-Identifier: MIT
#include "displays/DisplayInfo.h"
#include "displays/ScreenSource.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <string>

namespace lumenvale {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

DisplayInfo ddc(std::uint16_t maximum, std::optional<double> brightness = std::nullopt)
{
    DisplayInfo display;
    display.method = ControlMethod::ddc;
    display.maximum = maximum;
    display.brightness = brightness;
    return display;
}

DisplayInfo native(std::optional<double> brightness = std::nullopt)
{
    DisplayInfo display = ddc(100, brightness);
    display.method = ControlMethod::apple;
    return display;
}

TEST(ControlMethod, IsMadeOfItsOwnTextOnly)
{
    for (const auto method : {ControlMethod::apple, ControlMethod::ddc, ControlMethod::unavailable})
        EXPECT_EQ(controlMethodFromRawValue(rawValue(method)), method);
    for (const char* text : {"", "ddc", "Unavailable ", "apple native brightness"})
        EXPECT_FALSE(controlMethodFromRawValue(text)) << text;
}

TEST(Quantise, ClampsAndRoundsToTheDisplaysUnits)
{
    EXPECT_EQ(quantise(ddc(100), 0.426), 0.43);
    EXPECT_EQ(quantise(ddc(100), 0.125), 0.13);
    EXPECT_EQ(quantise(ddc(0), 0.426), 0.426);
    EXPECT_EQ(quantise(native(), 0.4264), 0.4264);
    for (const DisplayInfo& display : {ddc(100), ddc(0), native()}) {
        EXPECT_EQ(quantise(display, 1.7), 1.0);
        EXPECT_EQ(quantise(display, -0.2), 0.0);
        EXPECT_EQ(quantise(display, notANumber), 0.0);
        EXPECT_EQ(quantise(display, infinity), 0.0);
    }
}

TEST(Step, MovesByOneUnitAndStopsAtTheEnds)
{
    EXPECT_EQ(step(1, 100, 0.424), 0.43);
    EXPECT_EQ(step(-7, 100, 0.424), 0.41);
    EXPECT_EQ(step(1, 100, 1.0), 1.0);
    EXPECT_EQ(step(-1, 100, 0.0), 0.0);
    EXPECT_EQ(step(1, std::nullopt, 0.5), 0.501);
    EXPECT_EQ(step(1, 0, 0.9999), 1.0);
    EXPECT_EQ(step(1, 100, std::nullopt), 0.01);
    EXPECT_EQ(step(ddc(255, 1.0), -1), 254.0 / 255.0);
    EXPECT_EQ(step(native(0.5), -1), 0.499);
}

TEST(Step, WalkingTheWholeScaleVisitsEveryUnitOnce)
{
    for (const std::uint16_t maximum : {1, 100, 255, 4096, 65535}) {
        DisplayInfo display = ddc(maximum, 0.0);
        for (int unit = 1; unit <= maximum; ++unit) {
            display.brightness = step(display, 1);
            ASSERT_EQ(std::lround(*display.brightness * maximum), unit) << maximum;
            ASSERT_EQ(quantise(display, *display.brightness), *display.brightness);
        }
    }
}

TEST(Adjusted, MovesByAtLeastOneUnitAndStopsAtTheEnds)
{
    EXPECT_EQ(adjusted(ddc(100, 0.42), -0.05), 0.37);
    EXPECT_EQ(adjusted(ddc(10, 0.5), -0.05), 0.4) << "half a unit would be rounded back";
    EXPECT_EQ(adjusted(ddc(10, 0.5), 0.01), 0.6);
    EXPECT_EQ(adjusted(ddc(10, 0.5), 0.0), 0.5);
    EXPECT_EQ(adjusted(ddc(10, 1.0), 0.01), 1.0);
    EXPECT_EQ(adjusted(native(0.02), -0.05), 0.0);
}

TEST(DisplayTexts, SuitTheDisplaysScale)
{
    EXPECT_EQ(percentageText(ddc(100, 0.5)), "50%");
    EXPECT_EQ(percentageText(ddc(1000, 0.5)), "50.0%");
    EXPECT_EQ(percentageText(ddc(4096, 0.5)), "50.000%");
    EXPECT_EQ(percentageText(native(0.423)), "42.3%");
    EXPECT_EQ(percentageText(native(-0.0)), "0.0%");
    EXPECT_EQ(percentageText(native()), "—");

    EXPECT_EQ(stepSizeText(native()), "0.1 percentage points");
    EXPECT_EQ(stepSizeText(ddc(255)), "1 hardware unit (0.3922 percentage points)");
    EXPECT_EQ(stepSizeText(ddc(0)), "1 hardware unit (100 percentage points)");

    EXPECT_EQ(rawValueText(ddc(100, 0.42)), "42 / 100");
    EXPECT_EQ(rawValueText(native(static_cast<double>(0.1F))), "0.100000001 / 1.0 (Float32)");
    EXPECT_EQ(rawValueText(ddc(100)), "Not available");

    EXPECT_EQ(rangeText(ddc(100)), "101 command values; integer range 0–100.");
    EXPECT_EQ(rangeText(native()),
              "The API accepts a value from 0 to 1. The panel’s physical step size is not reported.");
}

/// A locale that writes 1.5 as "1,5" and 65536 as "65.536".
struct CommaLocale final : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(DisplayTexts, AreTheSameInEveryLocale)
{
    const std::locale former = std::locale::global(std::locale(std::locale::classic(), new CommaLocale));
    EXPECT_EQ(percentageText(native(0.423)), "42.3%");
    EXPECT_EQ(rawValueText(ddc(4096, 0.5)), "2048 / 4096");
    EXPECT_EQ(rangeText(ddc(65535)), "65536 command values; integer range 0–65535.");
    std::locale::global(former);
}

TEST(MakeDisplayInfo, TakesWholePointsAndIdentifiesByUuidElseByNumber)
{
    const auto display = makeDisplayInfo({.displayID = 7, .uuid = "A", .frameWidth = 1920.9, .frameHeight = -0.5});
    EXPECT_EQ(display->id, "A");
    EXPECT_EQ(display->logicalWidth, 1920);
    EXPECT_EQ(display->logicalHeight, 0);
    EXPECT_EQ(makeDisplayInfo({.displayID = 2})->id, "display-2");
    EXPECT_FALSE(makeDisplayInfo({.name = "No number"}));
}

TEST(MakeDisplayInfoDeathTest, AFrameBeyondAllScreensIsADefect)
{
    EXPECT_DEATH(makeDisplayInfo({.displayID = 2, .frameWidth = notANumber}), "");
    EXPECT_DEATH(makeDisplayInfo({.displayID = 2, .frameHeight = 0x1p63}), "");
}

} // namespace
} // namespace lumenvale
