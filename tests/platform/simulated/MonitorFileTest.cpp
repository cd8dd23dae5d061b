// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedFolder.h"
#include "support/MonitorFolder.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Texts = std::vector<std::string>;

constexpr char studio[] = R"({
  "name": "Studio 27", "displayID": 2, "uuid": "37d8832a-2d66-02ca-b9f7-8f30a301b230",
  "isBuiltIn": false, "isMain": true, "vendor": 4268, "model": 16589, "serial": 305419896,
  "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 1920, "logicalHeight": 1080, "refreshRate": 59.94,
  "nativePixelWidth": 3841, "nativePixelHeight": 2161, "alphanumericSerial": "QX7200143",
  "upstream": "DP", "downstream": "HDMI", "online": false,
  "native": { "brightness": 0.625, "readFails": true, "writeFails": true, "overridesTo": 0.5 },
  "ddc": { "maximum": 255, "current": 42, "silent": true, "ignoresWrites": true, "overridesTo": 7,
           "failNextTransfers": 1, "corruptEvery": 2, "delayMs": 3 } })";

TEST(MonitorFile, TakesEveryKeyFromTheFileAndFillsInWhatIsLeftOut)
{
    const MonitorFile expected{"Studio 27",
                               2,
                               "37D8832A-2D66-02CA-B9F7-8F30A301B230",
                               false,
                               true,
                               4268,
                               16589,
                               305419896,
                               3840,
                               2160,
                               1920,
                               1080,
                               59.94,
                               3841,
                               2161,
                               "QX7200143",
                               "DP",
                               "HDMI",
                               false,
                               NativeControl{0.625, true, true, 0.5},
                               DdcControl{255, 42, true, true, 7, 1, 2, 3}};
    EXPECT_EQ(parseMonitorFile(studio, "x.json"), expected);
    const MonitorFile bare{.name = "B", .pixelWidth = 800, .logicalWidth = 800};
    EXPECT_EQ(parseMonitorFile(R"({"name": "B", "pixelWidth": 800})", "x.json"), bare);
    const auto controlled =
        parseMonitorFile(R"({"name": "C", "native": {}, "ddc": {"maximum": 20, "overridesTo": null}})", "x.json");
    EXPECT_EQ(controlled->native, NativeControl());
    EXPECT_EQ(controlled->ddc, (DdcControl{.maximum = 20, .current = 10}));
}

TEST(MonitorFile, NamesFileAndKeyOfAMistake)
{
    const std::pair<std::string, std::string> rows[] = {
        {R"("x": 1,)", R"( is not valid JSON at byte 22.)"},
        {R"("refreshRate": 1e999)", R"( has a number that is too large.)"},
        {R"("name": "")", R"(: "name" must not be empty.)"},
        {R"("name": 5)", R"(: "name" must be a text.)"},
        {R"("Name": "Y")", R"(: "Name" is not a known key.)"},
        {R"("ddc": {"maxinum": 5})", R"(: "ddc.maxinum" is not a known key.)"},
        {R"("ddc": null)", R"(: "ddc" must be an object.)"},
        {R"("isMain": 1)", R"(: "isMain" must be true or false.)"},
        {R"("displayID": 18446744073709551615)", R"(: "displayID" must be a whole number from 1 to 4294967295.)"},
        {R"("uuid": "37D8832A")", R"(: "uuid" must be 32 hexadecimal digits in groups of 8-4-4-4-12.)"},
        {R"("vendor": 65536)", R"(: "vendor" must be a whole number from 0 to 65535.)"},
        {R"("refreshRate": "60")", R"(: "refreshRate" must be a number from 0 to 10000.)"},
        {R"("native": {"brightness": 1.0000001})", R"(: "native.brightness" must be a number from 0 to 1.)"},
        {R"("ddc": {"current": 101})", R"(: "ddc.current" must be a whole number from 0 to 100.)"},
        {R"("ddc": {"overridesTo": 101})", R"(: "ddc.overridesTo" must be a whole number from 0 to 100.)"},
        {R"("ddc": {"delayMs": -1})", R"(: "ddc.delayMs" must be a whole number from 0 to 10000.)"},
    };
    for (const auto& [part, mistake] : rows)
        EXPECT_EQ(parseMonitorFile(R"({"name": "X", )" + part + "}", "x.json").error(), "x.json" + mistake);
    EXPECT_EQ(parseMonitorFile("5", "x.json").error(), "x.json: holds something else than one JSON object.");
    EXPECT_EQ(parseMonitorFile("{}", "x.json").error(), R"(x.json: "name" is missing.)");
}

TEST(MonitorFile, ChangesOneValueAndKeepsAllElseInItsOrder)
{
    auto expected = parseOrderedJson(studio).value();
    expected["ddc"]["current"] = 250;
    expected["native"]["brightness"] = 0.3;
    expected["ddc"]["failNextTransfers"] = 0;
    const std::string changed = withFailNextTransfers(withNativeBrightness(withDdcCurrent(studio, 250), 0.3), 0);
    EXPECT_EQ(writeJson(parseOrderedJson(changed).value()), writeJson(expected));
}

TEST(SimulatedFolder, KeepsTheOthersWhenAFileIsBrokenAndADisplaysNumberWhenOthersComeAndGo)
{
    constexpr char uuid[] = R"(, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230"})";
    MonitorFolder files;
    files.write("5.json", R"({"name": "Five"})");
    SimulatedFolder folder(files.path());
    const std::uint32_t number = folder.read().displays.at(0).displayID;
    files.write("1.json", R"({"name": "One", "displayID": 1)" + std::string(uuid));
    files.write("2.json", R"({"name": "Two", "colour": "red"})");
    files.write("3.json", R"({"name": "Three", "displayID": 1})");
    files.write("4.json", R"({"name": "Four", "displayID": 4)" + std::string(uuid));
    files.write("6.json", R"({"name": "Six", "displayID": 4})");
    for (const char* other : {"preferences.json", ".hidden.json", "d.json.Xy12ab"})
        files.write(other, R"({"name": "Other"})");
    const FolderContents contents = folder.read();
    EXPECT_EQ(contents.problems,
              (Texts{R"(2.json: "colour" is not a known key.)", R"(3.json: the "displayID" 1 is taken by 1.json.)",
                     R"(4.json: the "uuid" is taken by 1.json.)"}));
    ASSERT_EQ(contents.displays.size(), 3U);
    EXPECT_EQ(folder.find(1)->fileName, "1.json");
    EXPECT_EQ(folder.find(number)->fileName, "5.json");
    EXPECT_EQ(folder.find(4)->fileName, "6.json");
    files.write("6.json", R"({"name": "Six", "displayID": 6})"); // and another takes its number
    files.write("7.json", R"({"name": "Seven", "displayID": 4})");
    EXPECT_EQ(folder.find(4)->fileName, "7.json");
    files.remove("7.json");
    EXPECT_FALSE(folder.find(4));
}

} // namespace
} // namespace lumenvale
