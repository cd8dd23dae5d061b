// SPDX-License-Identifier: MIT
#include "presets/BrightnessPreset.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

namespace lumenvale {
namespace {

using Json = nlohmann::json;

const Uuid eveningID = *Uuid::parse("37D8832A-2D66-02CA-B9F7-8F30A301B230");

PropertyData bytes(const std::string& text) { return PropertyData(text.begin(), text.end()); }
std::string text(const PropertyData& data) { return std::string(data.begin(), data.end()); }

BrightnessPreset evening()
{
    BrightnessPreset preset{eveningID, " Evening “1/2” ", PresetShortcut(), {}, {}};
    preset.shortcut->command = preset.shortcut->shift = true;
    preset.shortcut->recordedKeyCode = 4294967295;
    preset.shortcut->recordedKeyLabel = "⎋";
    preset.values = {{"display-2", 0.1 + 0.2}, {"display-3", 1.0}, {"", 0.0}};
    preset.displayNames = {{"display-2", "Büro \"links\"\n"}};
    return preset;
}

Json document()
{
    const PropertyData data = encodePresets({evening()}).value();
    return Json::parse(std::string(data.begin(), data.end()));
}

std::string problemOf(const Json& changed)
{
    const auto decoded = decodePresets(bytes(changed.dump()));
    return decoded ? "" : decoded.error();
}

TEST(PresetJson, DecodingWhatWasEncodedGivesTheSamePresets)
{
    BrightnessPreset bare{Uuid::random(), "", std::nullopt, {}, {}};
    BrightnessPreset functionKey{Uuid::random(), "B", PresetShortcut(), {{"x", 5e-324}}, {}};
    functionKey.shortcut->functionKey = -20;
    for (const auto& list : {std::vector<BrightnessPreset>(), {evening()}, {bare, evening(), functionKey}})
        EXPECT_EQ(decodePresets(encodePresets(list).value()), list);
}

TEST(PresetJson, TheDocumentHasTheFieldsNamesInTheirOrderAndLeavesOutWhatIsAbsent)
{
    BrightnessPreset preset = evening();
    preset.name = "A";
    preset.values = {{"display-2", 0.5}};
    preset.displayNames = {{"display-2", "B"}};
    preset.shortcut = PresetShortcut();
    preset.shortcut->functionKey = 16;
    EXPECT_EQ(text(encodePresets({preset}).value()),
              R"([{"id":"37D8832A-2D66-02CA-B9F7-8F30A301B230","name":"A",)"
              R"("shortcut":{"functionKey":16,"command":false,"option":false,"control":false,"shift":false},)"
              R"("values":{"display-2":0.5},"displayNames":{"display-2":"B"}}])");
    EXPECT_EQ(text(encodePresets({}).value()), "[]");
}

TEST(PresetJson, OneMissingRequiredKeyFailsTheDocument)
{
    for (const char* key : {"id", "name", "values", "displayNames"}) {
        Json changed = Json::array({document()[0], document()[0]});
        changed[1].erase(key);
        EXPECT_EQ(problemOf(changed), std::string("[1]: the key \"") + key + "\" is missing");
    }
    for (const char* key : {"functionKey", "command", "option", "control", "shift"}) {
        Json changed = document();
        changed[0]["shortcut"].erase(key);
        EXPECT_EQ(problemOf(changed), std::string("[0].shortcut: the key \"") + key + "\" is missing");
    }
}

TEST(PresetJson, AMistypedValueFailsTheDocumentAndIsNamed)
{
    constexpr char code[] = "a whole number from 0 to 4294967295";
    constexpr char number[] = "a whole number from -9223372036854775808 to 9223372036854775807";
    struct Mistake {
        const char* place;
        const char* named;
        Json value;
        const char* expected;
    };
    const Mistake mistakes[] = {
        {"/0", "[0]", 5, "an object"},
        {"/0/id", "[0].id", "5", "a UUID"},
        {"/0/name", "[0].name", nullptr, "a string"},
        {"/0/shortcut", "[0].shortcut", true, "an object"},
        {"/0/shortcut/functionKey", "[0].shortcut.functionKey", 1.5, number},
        {"/0/shortcut/functionKey", "[0].shortcut.functionKey", std::uint64_t{1} << 63, number},
        {"/0/shortcut/command", "[0].shortcut.command", 1, "true or false"},
        {"/0/shortcut/recordedKeyCode", "[0].shortcut.recordedKeyCode", -1, code},
        {"/0/shortcut/recordedKeyCode", "[0].shortcut.recordedKeyCode", 4294967296, code},
        {"/0/shortcut/recordedKeyCode", "[0].shortcut.recordedKeyCode", 7.0, code},
        {"/0/shortcut/recordedKeyLabel", "[0].shortcut.recordedKeyLabel", 7, "a string"},
        {"/0/values", "[0].values", Json::array(), "an object"},
        {"/0/displayNames", "[0].displayNames", "a", "an object"},
        {"/0/displayNames/display-9", "[0].displayNames[\"display-9\"]", 7, "a string"}};
    for (const Mistake& each : mistakes) {
        Json changed = document();
        changed[Json::json_pointer(each.place)] = each.value;
        EXPECT_EQ(problemOf(changed),
                  std::string(each.named) + ": expected " + each.expected + ", found " + each.value.type_name());
    }
    EXPECT_NE(problemOf("text"), "");
    Json changed = document();
    changed[0]["shortcut"]["functionKey"] = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(problemOf(changed), "");
}

TEST(PresetJson, UnknownKeysOptionalNullsAndIdentitiesInLowerCaseAreAccepted)
{
    Json changed = document();
    changed[0]["colour"] = Json::parse(R"({"deep":[1,{"er":null}]})");
    changed[0]["shortcut"]["hyper"] = true;
    changed[0]["shortcut"]["recordedKeyLabel"] = nullptr;
    changed[0]["id"] = "37d8832a-2d66-02ca-b9f7-8f30a301b230";
    changed[0]["values"] = Json::parse(R"({"a":1,"b":"0.5","c":null,"d":false})");
    const auto decoded = decodePresets(bytes(changed.dump()));
    ASSERT_TRUE(decoded) << decoded.error();
    EXPECT_EQ(decoded->at(0).id, eveningID);
    EXPECT_EQ(decoded->at(0).shortcut->recordedKeyLabel, std::nullopt);
    EXPECT_EQ(decoded->at(0).values.at("a"), 1.0);
    for (const char* display : {"b", "c", "d"})
        EXPECT_TRUE(std::isnan(decoded->at(0).values.at(display))) << "left to the store to drop";
}

TEST(PresetJson, EveryTruncationAndRubbishIsRefusedWithoutHarm)
{
    const PropertyData whole = encodePresets({evening()}).value();
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(
            decodePresets(PropertyData(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length))));
    for (const char* rubbish : {"null", "{}", "[]]", "[1e999]", "\xFF\xFE", "[\"\xC3\x28\"]", "bplist00"})
        EXPECT_FALSE(decodePresets(bytes(rubbish))) << rubbish;
    EXPECT_FALSE(decodePresets(PropertyData(1000, 0)));
}

TEST(PresetJson, NestingOfAnyDepthIsRefusedWithoutHarm)
{
    constexpr std::size_t depth = 100'000;
    EXPECT_FALSE(decodePresets(PropertyData(depth, '[')));
    std::string objects;
    for (std::size_t i = 0; i < depth; ++i)
        objects += "{\"a\":";
    EXPECT_FALSE(decodePresets(bytes(objects)));
    std::string whole = document().dump();
    whole.insert(2, "\"unknown\":" + std::string(depth, '[') + std::string(depth, ']') + ",");
    EXPECT_TRUE(decodePresets(bytes(whole)));
}

TEST(PresetJson, LevelsThatAreNoNumbersCannotBeEncodedAndBrokenTextsAreMended)
{
    for (const double level : {std::nan(""), HUGE_VAL}) {
        BrightnessPreset preset = evening();
        preset.values["display-2"] = level;
        EXPECT_FALSE(encodePresets({preset}));
    }
    BrightnessPreset preset = evening();
    preset.displayNames["display-2"] = "A\xFFZ";
    EXPECT_EQ(decodePresets(encodePresets({preset}).value())->at(0).displayNames.at("display-2"), "A\uFFFDZ");
}

TEST(BrightnessPreset, ANameOfAnyKindOfWhiteSpaceIsShownAsUntitledAndAnyOtherUnchanged)
{
    BrightnessPreset preset;
    for (const char* blank : {"", "   ", "\t\n\r\v\f", "\u00A0\u2003\u3000\u2028 \xC2\x85"}) {
        preset.name = blank;
        EXPECT_EQ(displayName(preset), "Untitled preset") << '"' << blank << '"';
    }
    for (const char* name : {" a ", "\u00A0.", "\xE2\x80", "\xC2", "夜"}) {
        preset.name = name;
        EXPECT_EQ(displayName(preset), name);
    }
}

TEST(BrightnessPreset, TheDefaultShortcutIsTheFirstFreeOfF16ToF20)
{
    std::vector<BrightnessPreset> presets;
    for (const std::int64_t number : {16, 19, 17, 0})
        presets.emplace_back().shortcut.emplace().functionKey = number;
    presets.back().shortcut->recordedKeyCode = 79; // the code of F18
    presets.emplace_back();
    EXPECT_EQ(defaultShortcut(presets).value().functionKey, 18);
}

} // namespace
} // namespace lumenvale
