// SPDX-License-Identifier: MIT
#include "presets/PresetStore.h"

#include "base/MemoryUserDefaults.h"

#include <cmath>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

constexpr char key[] = "brightnessPresets";

PropertyData bytes(const std::string& text) { return PropertyData(text.begin(), text.end()); }

/// One stored preset; `id` completes its identity.
std::string stored(int id, const std::string& values, const std::string& shortcut = "null")
{
    return R"({"id":"00000000-0000-4000-8000-00000000000)" + std::to_string(id) + R"(","name":"P)" +
           std::to_string(id) + R"(","shortcut":)" + shortcut + R"(,"values":)" + values +
           R"(,"displayNames":{}})";
}

DisplayInfo display(std::uint16_t maximum)
{
    DisplayInfo info;
    info.id = "display-1";
    info.name = "Studio 27";
    info.method = maximum == 0 ? ControlMethod::apple : ControlMethod::ddc;
    info.maximum = maximum;
    return info;
}

PresetShortcut recorded(std::uint32_t code)
{
    PresetShortcut shortcut;
    shortcut.recordedKeyCode = code;
    return shortcut;
}

struct PresetStoreTest : testing::Test {
    PresetStore load(const std::string& document)
    {
        defaults.values.insert_or_assign(key, bytes(document));
        return PresetStore(defaults);
    }
    std::vector<BrightnessPreset> saved() const
    {
        return decodePresets(*defaults.values.at(key).as<PropertyData>()).value();
    }
    void countShortcutChanges(PresetStore& store)
    {
        store.shortcutsChanged = [this] { ++shortcutChanges; };
    }

    MemoryUserDefaults defaults;
    int shortcutChanges = 0;
};

TEST_F(PresetStoreTest, LoadingKeepsTheFirstOfEqualIdentitiesAndDropsImpossibleLevelsAndShortcuts)
{
    const std::string modifiers = R"("command":false,"option":false,"control":true,"shift":false})";
    const std::string document =
        "[" + stored(1, R"({"low":-0.2,"high":1.5,"text":"0.5","none":null,"zero":0,"minus":-0.0,"one":1.0})") +
        "," + stored(1, R"({"second":0.5})") + "," + stored(2, "{}", R"({"functionKey":25,)" + modifiers) + "," +
        stored(3, "{}", R"({"functionKey":25,"recordedKeyCode":7,)" + modifiers) + "]";
    const PresetStore store = load(document);
    ASSERT_EQ(store.presets->size(), 3u);
    const auto& values = store.presets->at(0).values;
    EXPECT_EQ(values, (std::map<std::string, double>{{"zero", 0.0}, {"minus", 0.0}, {"one", 1.0}}));
    EXPECT_FALSE(std::signbit(values.at("minus")));
    EXPECT_FALSE(store.presets->at(1).shortcut);
    EXPECT_TRUE(store.presets->at(2).shortcut);
    EXPECT_EQ(*defaults.values.at(key).as<PropertyData>(), bytes(document)) << "loading does not save";
    EXPECT_TRUE(store.shortcutErrors->empty());
    EXPECT_EQ(*store.persistenceError, std::nullopt);
}

TEST_F(PresetStoreTest, UnreadablePresetsAreCopiedAsideOnceBeforeTheFirstSaveAndNeverOverwritten)
{
    const auto copies = [this] { return defaults.values.size() - defaults.values.contains(key); };
    {
        PresetStore store = load("[1]");
        EXPECT_TRUE(store.presets->empty());
        EXPECT_EQ(copies(), 0u) << "nothing is written before it must";
        store.addPreset({}, {});
        store.addPreset({}, {});
        EXPECT_EQ(defaults.values.at("brightnessPresets.unreadable"), PropertyValue(bytes("[1]")));
        EXPECT_EQ(saved(), *store.presets);
    }
    PresetStore(defaults).addPreset({}, {});
    load("[1]").save();
    EXPECT_EQ(copies(), 1u) << "the same bytes need no second copy";
    load("[2]").save();
    load("[3]").save();
    load("[2]").save();
    EXPECT_EQ(defaults.values.at("brightnessPresets.unreadable"), PropertyValue(bytes("[1]")));
    EXPECT_EQ(defaults.values.at("brightnessPresets.unreadable.2"), PropertyValue(bytes("[2]")));
    EXPECT_EQ(defaults.values.at("brightnessPresets.unreadable.3"), PropertyValue(bytes("[3]")));
    defaults.values.insert_or_assign(key, "[] as text");
    PresetStore(defaults).save();
    EXPECT_EQ(defaults.values.at("brightnessPresets.unreadable.4"), PropertyValue("[] as text"));
    EXPECT_EQ(copies(), 4u);
}

TEST_F(PresetStoreTest, NewPresetsTakeTheFirstFreeNameAndFunctionKey)
{
    PresetStore store(defaults);
    countShortcutChanges(store);
    EXPECT_EQ(displayLabel(*store.addPreset({{"a", 0.5}, {"b", std::nan("")}}, {{"a", "A"}}).shortcut), "F16");
    EXPECT_EQ(store.presets->at(0).values, (std::map<std::string, double>{{"a", 0.5}}));
    for (int i = 0; i < 4; ++i)
        store.addPreset({}, {});
    EXPECT_EQ(displayLabel(*store.presets->back().shortcut), "F20");
    EXPECT_FALSE(store.addPreset({}, {}).shortcut) << "F16 to F20 are taken";
    EXPECT_EQ(store.presets->back().name, "Preset 6");
    EXPECT_EQ(shortcutChanges, 6);
    store.deletePreset(store.presets->at(1).id);
    store.rename(store.presets->at(1).id, "  ");
    EXPECT_EQ(store.addPreset({}, {}).name, "Preset 2");
    EXPECT_EQ(store.addPreset({}, {}).name, "Preset 3");
    store.rename(store.presets->back().id, "preset 8");
    EXPECT_EQ(store.addPreset({}, {}).name, "Preset 3");
    EXPECT_EQ(saved(), *store.presets);
}

TEST_F(PresetStoreTest, EveryChangeIsSavedAndOnlyThoseOfShortcutsAreAnnounced)
{
    PresetStore store(defaults);
    const Uuid first = store.addPreset({}, {}).id;
    const Uuid second = store.addPreset({}, {}).id;
    countShortcutChanges(store);
    store.rename(first, "  Evening ");
    EXPECT_EQ(saved().at(0).name, "  Evening ");
    store.setLevel(first, display(100), 0.426);
    store.setLevel(second, display(0), 1.7);
    EXPECT_EQ(saved().at(0).values.at("display-1"), 0.43);
    EXPECT_EQ(saved().at(0).displayNames.at("display-1"), "Studio 27");
    EXPECT_EQ(saved().at(1).values.at("display-1"), 1.0);
    store.setLevel(second, display(0), std::nan(""));
    EXPECT_EQ(saved().at(1).values.at("display-1"), 1.0);
    EXPECT_EQ(shortcutChanges, 0);

    BrightnessPreset changed = store.presets->at(1);
    changed.name = "Replaced";
    changed.values = {{"x", 0.25}, {"y", 2.0}};
    store.update(changed);
    EXPECT_EQ(saved().at(1).values, (std::map<std::string, double>{{"x", 0.25}}));
    EXPECT_EQ(saved().at(1).name, "Replaced");
    EXPECT_TRUE(store.setShortcut(std::nullopt, first));
    EXPECT_FALSE(saved().at(0).shortcut);
    store.deletePreset(store.presets->at(0).id);
    EXPECT_EQ(saved(), *store.presets);
    EXPECT_EQ(shortcutChanges, 3);
}

TEST_F(PresetStoreTest, AShortcutOfAnotherPresetIsRefusedUntilAFreeOneIsGiven)
{
    PresetStore store(defaults);
    const Uuid first = store.addPreset({}, {}).id;
    const Uuid second = store.addPreset({}, {}).id;
    ASSERT_TRUE(store.setShortcut(recorded(40), first));
    ASSERT_TRUE(store.setShortcut(recorded(40), first)) << "its own";
    countShortcutChanges(store);
    EXPECT_FALSE(store.setShortcut(recorded(40), second));
    const std::map<Uuid, std::string> refused{{second, "This shortcut is already assigned to another preset."}};
    EXPECT_EQ(*store.shortcutErrors, refused);
    EXPECT_EQ(displayLabel(*store.preset(second)->shortcut), "F17");
    EXPECT_EQ(shortcutChanges, 0);
    EXPECT_TRUE(store.setShortcut(recorded(41), second));
    EXPECT_TRUE(store.shortcutErrors->empty());
    EXPECT_FALSE(store.setShortcut(recorded(40), second));
    store.deletePreset(second);
    EXPECT_TRUE(store.shortcutErrors->empty());
}

TEST_F(PresetStoreTest, AFailedSaveIsReportedUntilTheNextGoodOneAndKeepsTheChange)
{
    PresetStore store(defaults);
    defaults.failure = "The disk is full.";
    const Uuid id = store.addPreset({}, {}).id;
    EXPECT_EQ(*store.persistenceError, "Could not save presets: The disk is full.");
    EXPECT_EQ(store.presets->size(), 1u);
    defaults.failure.clear();
    store.rename(id, "Evening");
    EXPECT_EQ(*store.persistenceError, std::nullopt);
    EXPECT_EQ(saved().at(0).name, "Evening");

    defaults.failures.emit("The disk is full.");
    EXPECT_NE(*store.persistenceError, std::nullopt);
    defaults.failures.emit("");
    EXPECT_EQ(*store.persistenceError, std::nullopt) << "saved after all, without another change of a preset";
}

TEST_F(PresetStoreTest, CallersMayPassReferencesIntoTheListThatTheyChange)
{
    PresetStore store(defaults);
    store.addPreset({}, {});
    store.addPreset({}, {});
    store.setShortcut(store.presets->at(0).shortcut, store.presets->at(1).id);
    EXPECT_EQ(store.shortcutErrors->size(), 1u);
    store.setShortcut(recorded(3), store.presets->at(0).id);
    EXPECT_TRUE(store.setShortcut(store.presets->at(1).shortcut, store.presets->at(1).id));
    store.rename(store.presets->at(0).id, store.presets->at(1).name);
    EXPECT_EQ(store.presets->at(0).name, "Preset 2");
    store.update(store.presets->at(0));
    store.deletePreset(store.presets->at(1).id);
    store.deletePreset(store.presets->at(0).id);
    EXPECT_TRUE(store.presets->empty());
}

} // namespace
} // namespace lumenvale
