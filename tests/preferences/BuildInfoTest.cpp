// SPDX-License-Identifier: MIT
#include "preferences/BuildInfo.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using std::chrono::system_clock;

TEST(BuildInfo, ReadsTimesWithAZoneToTheSecond)
{
    EXPECT_EQ(parseIsoTime("2025-01-31T18:04:05Z"), system_clock::from_time_t(1738346645));
    EXPECT_EQ(parseIsoTime("2025-01-31T19:34:05+01:30"), system_clock::from_time_t(1738346645));
    EXPECT_EQ(parseIsoTime("2025-01-30T23:04:05-19:00"), system_clock::from_time_t(1738346645));
    EXPECT_EQ(parseIsoTime("2024-02-29T00:00:00Z"), system_clock::from_time_t(1709164800));
}

TEST(BuildInfo, RefusesTimesThatAreIncompleteImpossibleOrBeyondTheClock)
{
    const std::string good = "2025-01-31T18:04:05Z";
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(parseIsoTime(good.substr(0, length))) << length;
    for (const char* bad :
         {"2025-01-31T18:04:05.5Z", "2025-01-31 18:04:05Z", "2025-02-29T00:00:00Z", "2025-13-01T00:00:00Z",
          "2025-00-01T00:00:00Z", "2025-01-00T00:00:00Z", "2025-01-31T24:00:00Z", "2025-01-31T18:60:05Z",
          "2025-01-31T18:04:60Z", "2025-01-31T18:04:05", "2025-01-31T18:04:05+0130", "2025-01-31T18:04:05+24:00",
          "2025-01-31T18:04:05+01:30Z", "2025-01-31T18:04:05Z ", "25-01-31T18:04:05Z", "+025-01-31T18:04:05Z"})
        EXPECT_FALSE(parseIsoTime(bad)) << bad;
    parseIsoTime("9999-12-31T23:59:59-23:59"); // none where the clock counts nanoseconds; never undefined
}

TEST(BuildInfo, MissingAndUnreadableResourcesLeaveTheRest)
{
    BuildResources resources;
    resources.version = "1.2";
    for (const char* metadata : {"", "{", "[]", "{}", R"({"builtAt":5})", R"({"builtAt":"yesterday"})", "\xFF"}) {
        resources.metadata = metadata;
        const BuildInfo info = readBuildInfo(resources);
        EXPECT_EQ(info.version, "1.2");
        EXPECT_EQ(info.number, "Unknown");
        EXPECT_FALSE(info.builtAt) << metadata;
    }
    resources.number = "34";
    resources.metadata = R"({"by":"x","builtAt":"2025-01-31T18:04:05Z"})";
    EXPECT_EQ(readBuildInfo(resources).number, "34");
    EXPECT_EQ(readBuildInfo(resources).builtAt, system_clock::from_time_t(1738346645));
}

TEST(BuildInfo, IsLabelledForTheWeekAfterTheBuild)
{
    BuildInfo info;
    const auto format = [](BuildInfo::Time time) { return std::to_string(system_clock::to_time_t(time)); };
    const auto built = system_clock::from_time_t(1738346645);
    EXPECT_EQ(buildLabel(info, built, format), std::nullopt);
    info.builtAt = built;
    EXPECT_EQ(buildLabel(info, built, format), "Built 1738346645");
    EXPECT_TRUE(buildLabel(info, built + 7 * 24h - 1s, format));
    EXPECT_FALSE(buildLabel(info, built + 7 * 24h, format));
    EXPECT_FALSE(buildLabel(info, built - 1s, format));
    info.builtAt = BuildInfo::Time::min();
    EXPECT_FALSE(buildLabel(info, built, format));
    info.builtAt = BuildInfo::Time::max();
    EXPECT_FALSE(buildLabel(info, built, format));
}

} // namespace
} // namespace lumenvale
