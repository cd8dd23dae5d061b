// SPDX-License-Identifier: MIT
#include "base/Json.h"
#include "base/Words.h"
#include "presets/BrightnessPreset.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

PropertyData bytes(const std::string& text) { return PropertyData(text.begin(), text.end()); }
std::string textOf(const std::vector<BrightnessPreset>& presets)
{
    const PropertyData data = encodePresets(presets).value();
    return std::string(data.begin(), data.end());
}
std::string problemOf(const std::string& text)
{
    const auto decoded = decodePresets(bytes(text));
    return decoded ? "" : decoded.error();
}

constexpr char eveningText[] =
    R"([{"id":"37D8832A-2D66-02CA-B9F7-8F30A301B230","name":"E“1/2”",)"
    R"("shortcut":{"functionKey":0,"command":true,"option":false,"control":false,"shift":true,)"
    R"("recordedKeyCode":4294967295,"recordedKeyLabel":"⎋"},)"
    R"("values":{"display-2":0.5},"displayNames":{"display-2":"Büro \"links\"\n"}}])";

BrightnessPreset evening() { return decodePresets(bytes(eveningText)).value().at(0); }

TEST(PresetJson, TheDocumentHasTheFieldsInTheirOrderLeavesOutWhatIsAbsentAndIsReadBack)
{
    EXPECT_EQ(textOf({evening()}), eveningText);
    EXPECT_EQ(displayLabel(*evening().shortcut, portableWords), "⇧⌘⎋");
    BrightnessPreset bare{Uuid(), "", std::nullopt, {}, {}};
    EXPECT_EQ(textOf({bare}),
              R"([{"id":"00000000-0000-0000-0000-000000000000","name":"","values":{},"displayNames":{}}])");
    BrightnessPreset functionKey{Uuid::random(), "B", PresetShortcut(), {{"x", 5e-324}, {"", 0.1 + 0.2}}, {}};
    functionKey.shortcut->functionKey = -20;
    for (const auto& list : {std::vector<BrightnessPreset>(), {bare, evening(), functionKey}})
        EXPECT_EQ(decodePresets(bytes(textOf(list))), list);
}

TEST(PresetJson, OneMissingOrMistypedRequiredValueFailsTheDocumentAndIsNamed)
{
    const std::string code = ": expected a whole number from 0 to 4294967295, found number";
    const std::string number =
        ": expected a whole number from -9223372036854775808 to 9223372036854775807, found number";
    struct Mistake {
        std::string place;
        const char* value; ///< null: removed
        std::string problem;
    };
    std::vector<Mistake> mistakes = {
        {"/1", "5", "[1]: expected an object, found number"},
        {"/1/id", "\"5\"", "[1].id: expected a UUID, found string"},
        {"/1/name", "null", "[1].name: expected a string, found null"},
        {"/1/shortcut", "true", "[1].shortcut: expected an object, found boolean"},
        {"/1/shortcut/functionKey", "1.5", "[1].shortcut.functionKey" + number},
        {"/1/shortcut/functionKey", "9223372036854775808", "[1].shortcut.functionKey" + number},
        {"/1/shortcut/functionKey", "9223372036854775807", ""},
        {"/1/shortcut/command", "1", "[1].shortcut.command: expected true or false, found number"},
        {"/1/shortcut/recordedKeyCode", "-1", "[1].shortcut.recordedKeyCode" + code},
        {"/1/shortcut/recordedKeyCode", "4294967296", "[1].shortcut.recordedKeyCode" + code},
        {"/1/shortcut/recordedKeyCode", "null", ""},
        {"/1/shortcut/recordedKeyLabel", "7", "[1].shortcut.recordedKeyLabel: expected a string, found number"},
        {"/1/values", "[]", "[1].values: expected an object, found array"},
        {"/1/displayNames/d", "7", "[1].displayNames[\"d\"]: expected a string, found number"},
        {"/1/colour", R"({"deep":[1,{"er":null}]})", ""},
        {"/1/id", "\"37d8832a-2d66-02ca-b9f7-8f30a301b230\"", ""}};
    for (const std::string key : {"id", "name", "values", "displayNames"})
        mistakes.push_back({"/1/" + key, nullptr, "[1]: the key \"" + key + "\" is missing"});
    for (const std::string key : {"functionKey", "command", "option", "control", "shift"})
        mistakes.push_back({"/1/shortcut/" + key, nullptr, "[1].shortcut: the key \"" + key + "\" is missing"});
    for (const Mistake& each : mistakes) {
        OrderedJson document = parseOrderedJson(textOf({evening(), evening()})).value();
        const OrderedJson::json_pointer place(each.place);
        if (each.value)
            document[place] = parseOrderedJson(each.value).value();
        else
            document[place.parent_pointer()].erase(place.back());
        EXPECT_EQ(problemOf(writeJson(document)), each.problem) << each.place;
    }
}

TEST(PresetJson, LevelsThatAreNoNumbersAreReadForTheStoreToDropAndCannotBeWritten)
{
    OrderedJson document = parseOrderedJson(eveningText).value();
    document[0]["values"] = parseOrderedJson(R"({"a":1,"b":"0.5","c":null,"d":false})").value();
    const auto values = decodePresets(bytes(writeJson(document))).value().at(0).values;
    EXPECT_EQ(values.at("a"), 1.0);
    for (const char* display : {"b", "c", "d"})
        EXPECT_TRUE(std::isnan(values.at(display)));
    for (const double level : {std::nan(""), HUGE_VAL}) {
        BrightnessPreset preset = evening();
        preset.values["display-2"] = level;
        EXPECT_EQ(encodePresets({preset}).error(), "The level of display-2 in E“1/2” is not a number.");
    }
}

TEST(PresetJson, TruncationsRubbishAndNestingOfAnyDepthAreRefusedAndBrokenTextsMended)
{
    for (std::size_t length = 0; length < sizeof eveningText - 1; ++length)
        EXPECT_NE(problemOf(std::string(eveningText, length)), "");
    for (const char* rubbish : {"null", "{}", "[]]", "[1e999]", "\xFF\xFE", "[\"\xC3\x28\"]", "bplist00"})
        EXPECT_NE(problemOf(rubbish), "") << rubbish;
    constexpr std::size_t depth = 100'000;
    EXPECT_NE(problemOf(std::string(depth, '[')), "");
    std::string deep = eveningText;
    deep.insert(2, "\"unknown\":" + std::string(depth, '[') + std::string(depth, ']') + ",");
    EXPECT_EQ(problemOf(deep), "");
    BrightnessPreset preset = evening();
    preset.name = "A\xFFZ";
    EXPECT_EQ(decodePresets(bytes(textOf({preset})))->at(0).name, "A\uFFFDZ");
}

TEST(BrightnessPreset, ANameOfWhiteSpaceIsShownAsUntitledAndAnyOtherUnchanged)
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

} // namespace
} // namespace lumenvale
