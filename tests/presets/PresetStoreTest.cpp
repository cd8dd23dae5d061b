// SPDX-License-Identifier: MIT
#include "presets/PresetStore.h"
#include "base/Words.h"

#include "base/MemoryUserDefaults.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

constexpr char presetsKey[] = "brightnessPresets";
using Levels = std::map<std::string, double>;

PropertyData asData(const std::string& text) { return PropertyData(text.begin(), text.end()); }

/// One stored preset; `id` completes its identity.
std::string stored(int id, const std::string& values, const std::string& shortcut = "null")
{
    return R"({"id":"00000000-0000-4000-8000-00000000000)" + std::to_string(id) + R"(","name":"P","shortcut":)" +
           shortcut + R"(,"values":)" + values + R"(,"displayNames":{}})";
}

PresetShortcut recorded(std::uint32_t code) { return {.recordedKeyCode = code}; }

struct PresetStoreTest : testing::Test {
    PresetStore load(const std::string& document)
    {
        defaults.values.insert_or_assign(presetsKey, asData(document));
        return PresetStore(defaults);
    }
    std::vector<BrightnessPreset> saved() const
    {
        return decodePresets(*defaults.values.at(presetsKey).as<PropertyData>()).value();
    }

    MemoryUserDefaults defaults;
    PresetStore store{defaults};
};

TEST_F(PresetStoreTest, LoadingKeepsTheFirstOfEqualIdentitiesAndDropsImpossibleLevelsAndShortcuts)
{
    const std::string modifiers = R"("command":false,"option":false,"control":true,"shift":false})";
    const std::string document =
        "[" + stored(1, R"({"low":-0.2,"high":1.5,"text":"0.5","none":null,"zero":0,"minus":-0.0,"one":1.0})") +
        "," + stored(1, R"({"second":0.5})") + "," + stored(2, "{}", R"({"functionKey":25,)" + modifiers) + "," +
        stored(3, "{}", R"({"functionKey":25,"recordedKeyCode":7,)" + modifiers) + "]";
    const PresetStore loaded = load(document);
    ASSERT_EQ(loaded.presets->size(), 3u);
    EXPECT_EQ(loaded.presets->at(0).values, (Levels{{"zero", 0.0}, {"minus", 0.0}, {"one", 1.0}}));
    EXPECT_FALSE(std::signbit(loaded.presets->at(0).values.at("minus")));
    EXPECT_FALSE(loaded.presets->at(1).shortcut);
    EXPECT_TRUE(loaded.presets->at(2).shortcut);
    EXPECT_EQ(defaults.values.at(presetsKey), PropertyValue(asData(document))) << "loading does not save";
}

TEST_F(PresetStoreTest, UnreadablePresetsAreCopiedAsideOnceBeforeTheFirstSaveAndNeverOverwritten)
{
    {
        PresetStore loaded = load("[1]");
        EXPECT_TRUE(loaded.presets->empty());
        EXPECT_EQ(defaults.values.size(), 1u) << "nothing is written before it must";
        loaded.addPreset({}, {});
        loaded.addPreset({}, {});
        EXPECT_EQ(saved(), *loaded.presets);
    }
    PresetStore(defaults).addPreset({}, {});
    for (const char* document : {"[1]", "[2]", "[3]", "[2]"})
        load(document).save();
    defaults.values.insert_or_assign(presetsKey, "[] as text");
    PresetStore(defaults).save();
    const std::map<std::string, PropertyValue> expected = {{presetsKey, asData("[]")},
                                                           {"brightnessPresets.unreadable", asData("[1]")},
                                                           {"brightnessPresets.unreadable.2", asData("[2]")},
                                                           {"brightnessPresets.unreadable.3", asData("[3]")},
                                                           {"brightnessPresets.unreadable.4", "[] as text"}};
    EXPECT_EQ(defaults.values, expected);
}

TEST_F(PresetStoreTest, NewPresetsTakeTheFirstFreeNameAndTheFirstFreeOfF16ToF20)
{
    const auto add = [&] {
        const BrightnessPreset added = store.addPreset({{"a", 0.5}, {"b", std::nan("")}}, {{"a", "A"}});
        EXPECT_EQ(added.values, (Levels{{"a", 0.5}}));
        return added.name + " " + (added.shortcut ? displayLabel(*added.shortcut, portableWords) : "");
    };
    for (const char* expected : {"Preset 1 F16", "Preset 2 F17", "Preset 3 F18", "Preset 4 F19", "Preset 5 F20"})
        EXPECT_EQ(add(), expected);
    EXPECT_EQ(add(), "Preset 6 ");
    store.setShortcut(recorded(64), store.presets->at(1).id); // the code of F17
    store.rename(store.presets->at(1).id, "  ");
    EXPECT_EQ(add(), "Preset 2 F17");
    store.rename(store.presets->back().id, "preset 2");
    EXPECT_EQ(add(), "Preset 2 ");
}

TEST_F(PresetStoreTest, EveryChangeIsSavedAndOnlyThoseOfShortcutsAreAnnounced)
{
    int announced = 0;
    store.shortcutsChanged = [&] { ++announced; };
    const Uuid first = store.addPreset({}, {}).id;
    const Uuid second = store.addPreset({}, {}).id;
    EXPECT_EQ(announced, 2);
    const DisplayInfo native{.id = "A", .method = ControlMethod::apple};
    store.rename(first, "  Evening ");
    store.setLevel(first, {.id = "A", .name = "Studio 27", .method = ControlMethod::ddc}, 0.426);
    store.setLevel(second, native, 1.7);
    store.setLevel(second, native, std::nan(""));
    EXPECT_EQ(saved().at(0).name, "  Evening ");
    EXPECT_EQ(saved().at(0).values, (Levels{{"A", 0.43}}));
    EXPECT_EQ(saved().at(0).displayNames.at("A"), "Studio 27");
    EXPECT_EQ(saved().at(1).values, (Levels{{"A", 1.0}}));

    BrightnessPreset changed = store.presets->at(1);
    changed.values = {{"x", 0.25}, {"y", 2.0}};
    store.update(changed);
    EXPECT_EQ(saved().at(1).values, (Levels{{"x", 0.25}}));
    EXPECT_EQ(announced, 3);
    store.deletePreset(store.presets->at(0).id); // a reference into the list that changes
    EXPECT_EQ(saved(), *store.presets);
    EXPECT_EQ(announced, 4);
    changed.id = Uuid::random();
    store.update(changed);
    store.deletePreset(changed.id);
    EXPECT_FALSE(store.setShortcut(recorded(1), changed.id));
    EXPECT_EQ(announced, 4) << "there is no such preset";
}

TEST_F(PresetStoreTest, AShortcutOfAnotherPresetIsRefusedUntilAFreeOneIsGiven)
{
    const Uuid first = store.addPreset({}, {}).id;
    const Uuid second = store.addPreset({}, {}).id;
    EXPECT_TRUE(store.setShortcut(recorded(40), first));
    EXPECT_TRUE(store.setShortcut(store.presets->at(0).shortcut, store.presets->at(0).id)) << "its own";
    const std::map<Uuid, std::string> refused{{second, "This shortcut is already assigned to another preset."}};
    EXPECT_FALSE(store.setShortcut(recorded(40), second));
    EXPECT_EQ(displayLabel(*store.preset(second)->shortcut, portableWords), "F17");
    EXPECT_TRUE(store.setShortcut(recorded(41), second));
    EXPECT_TRUE(store.shortcutErrors->empty());
    EXPECT_FALSE(store.setShortcut(recorded(40), second));
    EXPECT_EQ(*store.shortcutErrors, refused);
    store.deletePreset(second);
    EXPECT_TRUE(store.shortcutErrors->empty());
    EXPECT_TRUE(store.setShortcut(std::nullopt, first));
    EXPECT_FALSE(saved().at(0).shortcut);
}

TEST_F(PresetStoreTest, AFailedSaveIsReportedUntilTheNextGoodOneAndKeepsTheChange)
{
    defaults.failure = "The disk is full.";
    const Uuid id = store.addPreset({}, {}).id;
    EXPECT_EQ(*store.persistenceError, "Could not save presets: The disk is full.");
    EXPECT_EQ(store.presets->size(), 1u);
    defaults.failure.clear();
    store.rename(id, "Evening");
    EXPECT_EQ(*store.persistenceError, std::nullopt);
    EXPECT_EQ(saved().at(0).name, "Evening");
    defaults.failures.emit("The disk is full.");
    store.rename(id, "Night");
    EXPECT_NE(*store.persistenceError, std::nullopt) << "the disk has not taken it yet";
    defaults.failures.emit("");
    EXPECT_EQ(*store.persistenceError, std::nullopt) << "saved after all, without another change of a preset";
}

} // namespace
} // namespace lumenvale
