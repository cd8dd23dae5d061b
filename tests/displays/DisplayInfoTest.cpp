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

DisplayInfo ddc(std::uint16_t maximum, std::optional<double> brightness = std::nullopt)
{
    return {.method = ControlMethod::ddc, .brightness = brightness, .maximum = maximum};
}

DisplayInfo native(std::optional<double> brightness = std::nullopt)
{
    return {.method = ControlMethod::apple, .brightness = brightness};
}

DisplayInfo panel(LevelRange levels, std::optional<double> brightness = std::nullopt)
{
    return {.method = ControlMethod::apple, .brightness = brightness, .levels = levels};
}

TEST(DisplayInfo, LevelsAreClampedAndRoundedToTheDisplaysUnits)
{
    EXPECT_EQ(quantise(ddc(100), 0.426), 0.43);
    EXPECT_EQ(quantise(ddc(100), 0.125), 0.13);
    EXPECT_EQ(quantise(ddc(0), 0.426), 0.426);
    EXPECT_EQ(quantise(native(), 0.4264), 0.4264);
    EXPECT_EQ(quantise(panel({1, 8}), 0.5), 4.0 / 7);
    for (const DisplayInfo& display : {ddc(100), ddc(0), native()}) {
        EXPECT_EQ(quantise(display, 1.7), 1.0);
        EXPECT_EQ(quantise(display, -0.2), 0.0);
        EXPECT_EQ(quantise(display, notANumber), 0.0);
        EXPECT_EQ(quantise(display, std::numeric_limits<double>::infinity()), 0.0);
    }
}

TEST(DisplayInfo, AStepIsOneUnitAndStopsAtTheEnds)
{
    EXPECT_EQ(step(1, 100, 0.424), 0.43);
    EXPECT_EQ(step(0, 100, 0.424), 0.42);
    EXPECT_EQ(step(1, std::nullopt, 0.5), 0.501);
    EXPECT_EQ(step(1, 0, 0.9999), 1.0);
    EXPECT_EQ(step(1, 100, std::nullopt), 0.01);
    EXPECT_EQ(step(native(0.5), -1), 0.499);
    EXPECT_EQ(step(panel({15, 1515}, 0.5), -1), 748.0 / 1500) << "0.1 percentage points, to the nearest level";
    EXPECT_EQ(step(panel({0, 15}, 0.5), 1), 9.0 / 15);
    EXPECT_EQ(adjusted(panel({1, 15}, 0.5), 0.03), 8.0 / 14) << "a small change moves by a level";
    for (const std::uint16_t maximum : {1, 100, 255, 4096, 65535}) {
        DisplayInfo display = ddc(maximum, 0.0);
        for (int unit = 1; unit <= maximum + 1; ++unit) {
            display.brightness = step(display, 1);
            ASSERT_EQ(std::lround(*display.brightness * maximum), std::min<int>(unit, maximum)) << maximum;
            ASSERT_EQ(quantise(display, *display.brightness), *display.brightness);
        }
    }
}

TEST(DisplayInfo, ARelativeChangeMovesByAtLeastOneUnitInItsDirectionAndStopsAtTheEnds)
{
    EXPECT_EQ(adjusted(ddc(10, 0.5), -0.04), 0.4) << "not half a unit, which would be rounded back";
    EXPECT_EQ(adjusted(ddc(10, 0.5), 0.04), 0.6);
    EXPECT_EQ(adjusted(ddc(10, 0.5), 0.0), 0.5);
    EXPECT_EQ(adjusted(ddc(10, 1.0), 0.01), 1.0);
    EXPECT_EQ(adjusted(ddc(10), 0.2), 0.2) << "unknown counts as none";
    EXPECT_EQ(adjusted(native(0.02), -0.05), 0.0);
}

/// A locale that writes 1.5 as "1,5" and 65536 as "65.536".
struct CommaLocale final : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(DisplayInfo, TextsSuitTheDisplaysScaleInEveryLocale)
{
    const std::locale former = std::locale::global(std::locale(std::locale::classic(), new CommaLocale));
    const std::pair<std::string, std::string> rows[] = {
        {percentageText(ddc(100, 0.5)), "50%"},
        {percentageText(ddc(101, 0.5)), "50.0%"},
        {percentageText(ddc(1001, 0.5)), "50.000%"},
        {percentageText(native(-0.0)), "0.0%"},
        {percentageText(native()), "—"},
        {stepSizeText(native()), "0.1 percentage points"},
        {stepSizeText(ddc(255)), "1 hardware unit (0.3922 percentage points)"},
        {stepSizeText(ddc(0)), "1 hardware unit (100 percentage points)"},
        {rawValueText(ddc(4096, 0.42)), "1720 / 4096"}, // 1720.32
        {rawValueText(ddc(100, 0.426)), "43 / 100"},
        {rawValueText(native(static_cast<double>(0.1F))), "0.100000001 / 1.0 (Float32)"},
        {stepSizeText(panel({0, 15})), "1 level (6.667 percentage points)"},
        {stepSizeText(panel({15, 1515})), "2 levels (0.1333 percentage points)"},
        {rawValueText(panel({15, 1515}, 629.0 / 1500)), "level 644 of 1515"},
        {rangeText(panel({15, 1515})), "1501 levels; integer range 15–1515."},
        {rawValueText(ddc(100)), "Not available"},
        {rangeText(ddc(65535)), "65536 command values; integer range 0–65535."},
        {rangeText(native()),
         "The API accepts a value from 0 to 1. The panel’s physical step size is not reported."},
        {std::string(description(BrightnessError::readFailed)),
         "The command was sent, but brightness could not be read back. Refresh to retry."}};
    std::locale::global(former);
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(text, expected);
}

TEST(DisplayInfo, ANewRecordTakesWhatTheScreenReportsAndKnowsNothingOfTheHardware)
{
    DisplayInfo expected;
    expected.id = "A";
    expected.displayID = 7;
    expected.name = "Studio 27";
    expected.isBuiltIn = expected.isMain = true;
    expected.vendor = 1, expected.model = 2, expected.serial = 3;
    expected.pixelWidth = 3840, expected.pixelHeight = 2160, expected.refreshRate = 59.94;
    expected.logicalWidth = 1920, expected.logicalHeight = -1;
    Screen screen{7, "A", "Studio 27", true, true, 1, 2, 3, ScreenMode{3840, 2160, 59.94}, 1920.9, -1.5};
    EXPECT_EQ(makeDisplayInfo(screen), expected);
    EXPECT_EQ(expected.status, "Checking hardware…");
    EXPECT_EQ(makeDisplayInfo({.displayID = 2})->id, "display-2");
    EXPECT_FALSE(makeDisplayInfo({.name = "No number"}));
    EXPECT_DEATH(makeDisplayInfo({.displayID = 2, .frameWidth = notANumber}), "");
    EXPECT_DEATH(makeDisplayInfo({.displayID = 2, .frameHeight = 0x1p63}), "");
}

} // namespace
} // namespace lumenvale
