// SPDX-License-Identifier: MIT
#include "preferences/BuildInfo.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

constexpr BuildInfo::Time built(1738346645s);

TEST(BuildInfo, MissingAndUnreadableResourcesLeaveTheRest)
{
    BuildResources resources;
    resources.version = "1.2";
    const auto parse = [](const std::string& text) {
        return text == "2025-01-31T18:04:05Z" ? std::optional(built) : std::nullopt;
    };
    for (const char* metadata : {"", "{", "[]", "{}", R"({"builtAt":5})", R"({"builtAt":"yesterday"})", "\xFF"}) {
        resources.metadata = metadata;
        const BuildInfo info = readBuildInfo(resources, parse);
        EXPECT_EQ(info.version, "1.2");
        EXPECT_EQ(info.number, "Unknown");
        EXPECT_FALSE(info.builtAt) << metadata;
    }
    resources.metadata = R"({"by":"x","builtAt":"2025-01-31T18:04:05Z"})";
    EXPECT_EQ(readBuildInfo(resources, parse).builtAt, built);
}

TEST(BuildInfo, IsLabelledForTheWeekAfterTheBuild)
{
    const auto format = [](BuildInfo::Time) { return std::string("now"); };
    EXPECT_EQ(buildLabel(BuildInfo(), built, format), std::nullopt);
    const BuildInfo info{.builtAt = built};
    EXPECT_EQ(buildLabel(info, built, format), "Built now");
    EXPECT_TRUE(buildLabel(info, built + 7 * 24h - 1s, format));
    EXPECT_FALSE(buildLabel(info, built + 7 * 24h, format));
    EXPECT_FALSE(buildLabel(info, built - 1s, format));
}

} // namespace
} // namespace lumenvale
