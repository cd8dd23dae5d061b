// SPDX-License-Identifier: MIT
#include "platform/simulated/MonitorFile.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lumenvale {
namespace {

constexpr char studio[] = R"({
  "name": "Studio 27", "displayID": 2, "uuid": "37d8832a-2d66-02ca-b9f7-8f30a301b230",
  "isBuiltIn": false, "isMain": true, "vendor": 4268, "model": 16589, "serial": 305419896,
  "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 1920, "logicalHeight": 1080, "refreshRate": 59.94,
  "nativePixelWidth": 3841, "nativePixelHeight": 2161, "alphanumericSerial": "QX7200143",
  "upstream": "DP", "downstream": "HDMI", "online": false,
  "native": { "brightness": 0.625, "readFails": true, "writeFails": true, "overridesTo": 0.5 },
  "ddc": { "maximum": 255, "current": 42, "silent": true, "ignoresWrites": true, "overridesTo": 7,
           "failNextTransfers": 1, "corruptEvery": 2, "delayMs": 3 } })";

TEST(MonitorFile, TakesEveryKeyFromTheFile)
{
    const auto monitor = parseMonitorFile(studio, "studio.json");
    ASSERT_TRUE(monitor) << monitor.error();
    const MonitorFile expected{.name = "Studio 27",
                               .displayID = 2,
                               .uuid = "37D8832A-2D66-02CA-B9F7-8F30A301B230",
                               .isMain = true,
                               .vendor = 4268,
                               .model = 16589,
                               .serial = 305419896,
                               .pixelWidth = 3840,
                               .pixelHeight = 2160,
                               .logicalWidth = 1920,
                               .logicalHeight = 1080,
                               .refreshRate = 59.94,
                               .nativePixelWidth = 3841,
                               .nativePixelHeight = 2161,
                               .alphanumericSerial = "QX7200143",
                               .upstream = "DP",
                               .downstream = "HDMI",
                               .online = false,
                               .native = NativeControl{0.625, true, true, 0.5},
                               .ddc = DdcControl{255, 42, true, true, 7, 1, 2, 3}};
    EXPECT_EQ(*monitor, expected);
}

TEST(MonitorFile, FillsInWhatIsLeftOut)
{
    const auto bare = parseMonitorFile(R"({"name": "Bare"})", "bare.json");
    ASSERT_TRUE(bare) << bare.error();
    EXPECT_FALSE(bare->displayID || bare->uuid || bare->native || bare->ddc || bare->nativePixelWidth);
    EXPECT_TRUE(bare->online);
    EXPECT_EQ(bare->logicalWidth, static_cast<double>(bare->pixelWidth));

    const auto controlled =
        parseMonitorFile(R"({"name": "C", "native": {}, "ddc": {"maximum": 20, "overridesTo": null}})", "c.json");
    ASSERT_TRUE(controlled) << controlled.error();
    EXPECT_EQ(*controlled->native, NativeControl());
    EXPECT_EQ(controlled->ddc->current, 10);
    EXPECT_EQ(controlled->ddc->overridesTo, std::nullopt);
}

TEST(MonitorFile, NamesFileAndKeyOfAMistake)
{
    const std::vector<std::pair<std::string, std::string>> mistakes{
        {R"({"name": "X",)", "x.json is not valid JSON at byte 14."},
        {"\"X\"", "x.json: holds something else than one JSON object."},
        {"{}", R"(x.json: "name" is missing.)"},
        {R"({"name": ""})", R"(x.json: "name" must not be empty.)"},
        {R"({"name": 5})", R"(x.json: "name" must be a text.)"},
        {R"({"name": "X", "Name": "Y"})", R"(x.json: "Name" is not a known key.)"},
        {R"({"name": "X", "ddc": {"maxinum": 5}})", R"(x.json: "ddc.maxinum" is not a known key.)"},
        {R"({"name": "X", "ddc": null})", R"(x.json: "ddc" must be an object.)"},
        {R"({"name": "X", "isMain": 1})", R"(x.json: "isMain" must be true or false.)"},
        {R"({"name": "X", "displayID": 18446744073709551615})",
         R"(x.json: "displayID" must be a whole number from 1 to 4294967295.)"},
        {R"({"name": "X", "uuid": "37D8832A"})",
         R"(x.json: "uuid" must be 32 hexadecimal digits in groups of 8-4-4-4-12.)"},
        {R"({"name": "X", "vendor": 65536})", R"(x.json: "vendor" must be a whole number from 0 to 65535.)"},
        {R"({"name": "X", "refreshRate": "60"})", R"(x.json: "refreshRate" must be a number from 0 to 10000.)"},
        {R"({"name": "X", "refreshRate": 1e999})", "x.json has a number that is too large."},
        {R"({"name": "X", "native": {"brightness": 1.0000001}})",
         R"(x.json: "native.brightness" must be a number from 0 to 1.)"},
        {R"({"name": "X", "ddc": {"current": 101}})",
         R"(x.json: "ddc.current" must be a whole number from 0 to 100.)"},
        {R"({"name": "X", "ddc": {"maximum": 20, "overridesTo": 21}})",
         R"(x.json: "ddc.overridesTo" must be a whole number from 0 to 20.)"},
        {R"({"name": "X", "ddc": {"delayMs": -1}})",
         R"(x.json: "ddc.delayMs" must be a whole number from 0 to 10000.)"}};
    for (const auto& [text, message] : mistakes) {
        const auto monitor = parseMonitorFile(text, "x.json");
        ASSERT_FALSE(monitor) << text;
        EXPECT_EQ(monitor.error(), message);
    }
}

TEST(MonitorFile, ChangesOneValueAndKeepsAllElseInItsOrder)
{
    auto expected = nlohmann::ordered_json::parse(studio);
    expected["ddc"]["current"] = 250;
    expected["native"]["brightness"] = 0.3;
    expected["ddc"]["failNextTransfers"] = 0;
    const std::string changed = withFailNextTransfers(withNativeBrightness(withDdcCurrent(studio, 250), 0.3), 0);
    EXPECT_EQ(nlohmann::ordered_json::parse(changed).dump(), expected.dump());
}

} // namespace
} // namespace lumenvale
