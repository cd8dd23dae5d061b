// SPDX-License-Identifier: MIT
#include "support/FakeStartupService.h"
#include "support/StoreFixture.h"
#include "support/Views.h"
#include "ui/controls/LevelSlider.h"
#include "preferences/BuildInfo.h"
#include "preferences/GeneralPreferences.h"
#include "ui/controls/Labels.h"
#include "ui/settings/DisplayDetail.h"
#include "ui/settings/SettingsFooter.h"
#include "ui/settings/SettingsTabController.h"
#include "ui/settings/Sidebar.h"

#include <QClipboard>
#include <QLineEdit>
#include <QScrollArea>

namespace lumenvale {
namespace {

struct FakeDiagnostics final : Diagnostics {
    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override
    {
        ++examinations;
        return {{Finding::Kind::problem, displays.front().id, "No permission to open the bus.",
                 "sudo adduser you i2c"},
                {Finding::Kind::good, "", "The module is loaded.", ""}};
    }
    int examinations = 0;
};

struct SettingsTest : StoreFixture {
    SettingsTest()
    {
        plug("A", {.brightness = 0.42});
        plug("B", {.method = ControlMethod::apple, .brightness = 0.5});
        hardware.holdsAnswers = false;
        store->requestRefresh();
        store->brightnessObserved = [this](const auto& changed) { editor.displaysChanged(changed); };
        window.resize(800, 580);
        window.show();
        editor.show(std::nullopt);
        turnLoop();
    }

    /// Lets the write tasks' waits pass and the views redraw.
    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            clock.advance(std::chrono::milliseconds(200));
            turnLoop();
        }
    }
    void openPresets() { click(window, "Presets"); }
    void addPreset()
    {
        openPresets();
        click(window, "Add a preset from the current brightness levels");
        settle();
    }
    const BrightnessPreset& onlyPreset() const { return presets.presets.get().at(0); }
    Sidebar* sidebar(const QString& name) { return named<Sidebar>(window, name); }

    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
    FakeStartupService startup;
    GeneralPreferences preferences{defaults, startup};
    FakeDiagnostics diagnostics;
    SettingsTabController window{{*store, presets, editor, preferences, diagnostics, clock,
                                  BuildInfo{"1.0", "1", clock.wallTime() - std::chrono::hours(1)}}};
};

TEST_F(SettingsTest, TabsFollowTheEditorAndTheEditorFollowsTheTabs)
{
    EXPECT_TRUE(named<QAbstractButton>(window, "Displays")->isChecked());
    click(window, "General");
    EXPECT_EQ(editor.selectedTab.get(), SettingsTab::general);
    editor.selectTab(SettingsTab::presets);
    turnLoop();
    EXPECT_TRUE(named<QAbstractButton>(window, "Presets")->isChecked());
    EXPECT_TRUE(shows<TextLabel>(window, "Select a preset to activate & edit it or add a new one."));
    pressKey(window, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(editor.selectedTab.get(), SettingsTab::general);
}

TEST_F(SettingsTest, TheGeneralPageShowsAndChangesThePreferences)
{
    click(window, "General");
    click(window, "Dock");
    EXPECT_EQ(preferences.presentation.get(), AppPresentation::dock);

    startup.statusAfterChange = StartupStatus::requiresApproval;
    click(window, "Launch at Startup");
    click(window, "Open Login Items…");
    EXPECT_EQ(startup.settingsOpened, 1);

    startup.failure = "The disk is full.";
    click(window, "Launch at Startup");
    EXPECT_TRUE(shows<TextLabel>(window, "Could not change Launch at Startup: The disk is full."));
    EXPECT_TRUE(named<QAbstractButton>(window, "Launch at Startup")->isChecked())
        << "the system's state, not the wish";
}

TEST_F(SettingsTest, TheDisplaysPageShowsTheSelectedDisplayAndFollowsIt)
{
    sidebar("Displays")->setCurrentRow(0);
    turnLoop();
    EXPECT_EQ(editor.selection.get(), SettingsSelection(DisplaySelection{"A"}));
    EXPECT_TRUE(shows<TextLabel>(window, "42 / 100 (42%)"));
    hardware.monitors["A"].brightness = 0.3;
    store->requestRefresh();
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(window, "30 / 100 (30%)"));

    click(window, "Copy all details of this display");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("Identifier: A"));

    unplug("A");
    store->requestRefresh();
    editor.displaysChanged(store->displays.get());
    turnLoop();
    EXPECT_EQ(editor.selection.get(), SettingsSelection(DisplaySelection{"B"})) << "a lost display is replaced";
}

TEST_F(SettingsTest, AListThatGetsTheFocusChoosesNothingUntilAskedTo)
{
    addPreset();
    editor.select(std::nullopt);
    turnLoop();
    window.activateWindow();
    sidebar("Presets")->setFocus(Qt::TabFocusReason);
    turnLoop();
    EXPECT_EQ(editor.selection.get(), std::nullopt);
    pressKey(*sidebar("Presets"), Qt::Key_Space);
    EXPECT_EQ(editor.selection.get(), SettingsSelection(PresetSelection{onlyPreset().id}));
}

TEST_F(SettingsTest, DisplaysAreMovedByKeyboard)
{
    Sidebar* list = sidebar("Displays");
    list->setCurrentRow(0);
    turnLoop();
    pressKey(*list, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shownIDs(), (std::vector<std::string>{"B", "A"}));
    EXPECT_EQ(list->currentRow(), 1) << "the selection moves with its display";
    pressKey(*list, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(shownIDs(), (std::vector<std::string>{"B", "A"}));
    pressKey(*list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(shownIDs(), (std::vector<std::string>{"A", "B"}));
}

TEST_F(SettingsTest, ADisplayWithoutControlIsExplained)
{
    hardware.monitors["A"].method = ControlMethod::unavailable;
    store->requestRefresh();
    sidebar("Displays")->setCurrentRow(0);
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(window, "No permission to open the bus.\nsudo adduser you i2c"));
    EXPECT_FALSE(shows<TextLabel>(window, "The module is loaded."));
    const int looks = diagnostics.examinations;
    store->setBrightness("B", 0.9);
    settle();
    EXPECT_EQ(diagnostics.examinations, looks) << "only a refresh is a reason to look again";
}

TEST_F(SettingsTest, APresetIsAddedRenamedAndDeleted)
{
    addPreset();
    ASSERT_EQ(presets.presets.get().size(), 1U);
    auto* name = window.findChild<QLineEdit*>("presetName");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->text(), "Preset 1");
    name->clear();
    name->setFocus();
    pressKey(*name, Qt::Key_Space);
    name->insert("  ");
    Q_EMIT name->textEdited(name->text());
    turnLoop();
    EXPECT_EQ(onlyPreset().name, name->text().toStdString());
    EXPECT_EQ(sidebar("Presets")->item(0)->text(), "Untitled preset");
    click(window, "Delete preset");
    EXPECT_TRUE(presets.presets.get().empty());
    EXPECT_TRUE(shows<TextLabel>(window, "Select a preset to activate & edit it or add a new one."));
}

TEST_F(SettingsTest, ALiveEditReachesTheScreenAndRevertTakesItBack)
{
    addPreset();
    auto* slider = named<LevelSlider>(window, "Name of A brightness");
    ASSERT_TRUE(slider);
    slider->request(0.8);
    settle();
    EXPECT_EQ(onlyPreset().values.at("A"), 0.8);
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.8);
    EXPECT_TRUE(shows<TextLabel>(window, "Active"));
    EXPECT_EQ(named<LevelSlider>(window, "Name of A brightness"), slider) << "the row is kept";
    click(window, "Revert");
    settle();
    EXPECT_EQ(onlyPreset().values.at("A"), 0.42);
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.42);
    EXPECT_EQ(slider->value(), 0.42);
    EXPECT_TRUE(shows<TextLabel>(window, "Reverted this editing session and restored the saved preset."));
}

TEST_F(SettingsTest, AnOutsideChangeMakesThePresetInactiveInPlainSight)
{
    addPreset();
    store->startMonitoring();
    hardware.monitors["B"].brightness = 0.9;
    clock.advance(std::chrono::milliseconds(750));
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(window, "Not active"));
    EXPECT_TRUE(
        shows<TextLabel>(window, "Brightness changed outside the preset. This preset is no longer active."));
}

TEST_F(SettingsTest, DisplaysThatAreNotConnectedStayListed)
{
    addPreset();
    BrightnessPreset changed = onlyPreset();
    changed.values["GONE"] = 0.456;
    changed.values["UNNAMED"] = 1.0;
    changed.displayNames["GONE"] = "Living room TV";
    presets.update(changed);
    turnLoop();
    EXPECT_TRUE(shows<ElidedLabel>(window, "Living room TV"));
    EXPECT_TRUE(shows<ElidedLabel>(window, "45.6% · Disconnected"));
    EXPECT_TRUE(shows<ElidedLabel>(window, "Disconnected display"));
}

TEST_F(SettingsTest, AShortcutIsRecordedRefusedAndDeleted)
{
    addPreset();
    click(window, "Add a preset from the current brightness levels");
    settle();
    const Uuid second = presets.presets.get().at(1).id;
    editor.select(PresetSelection{second});
    settle();
    click(window, "Record keyboard shortcut");
    EXPECT_TRUE(named<QAbstractButton>(window, "Cancel"));

    constexpr std::uint32_t keyF16 = 106; // the first preset has it
    EXPECT_TRUE(editor.handleKeyEvent({.keyCode = keyF16}));
    turnLoop();
    EXPECT_TRUE(shows<TextLabel>(window, "This shortcut is already assigned to another preset."));
    EXPECT_TRUE(named<QAbstractButton>(window, "Cancel")) << "recording goes on";

    EXPECT_TRUE(editor.handleKeyEvent({.keyCode = escapeKeyCode, .modifiers = KeyModifier::shift}));
    turnLoop();
    EXPECT_EQ(named<QAbstractButton>(window, "Record keyboard shortcut")->text(), "⇧⎋");
    click(window, "Delete shortcut");
    EXPECT_EQ(named<QAbstractButton>(window, "Record keyboard shortcut")->text(), "None");
    EXPECT_FALSE(presets.preset(second)->shortcut);
}

TEST(BuildTimeTest, IsWrittenAsTheLocaleWritesIt)
{
    const QDateTime time(QDate(2026, 11, 21), QTime(18, 4, 5));
    EXPECT_EQ(buildTimeText(time, QLocale::c()), "21 Nov 2026, 18:04:05");
    EXPECT_EQ(buildTimeText(time, QLocale("en_US")), "Nov 21, 2026, 6:04:05 PM");
    EXPECT_EQ(buildTimeText(time, QLocale("en_GB")), "21 Nov 2026, 18:04:05");
    EXPECT_EQ(buildTimeText(time, QLocale("de_DE")), "21. Nov. 2026, 18:04:05");
    EXPECT_EQ(buildTimeText(time, QLocale("ja_JP")), "2026年11月21日, 18時04分05秒");
}

TEST_F(SettingsTest, EverythingThatTakesTheFocusHasANameAndNothingIsCutOffAtTheSmallestSize)
{
    addPreset();
    for (const char* tab : {"General", "Displays", "Presets"}) {
        click(window, tab);
        for (const QWidget* each : window.findChildren<QWidget*>()) {
            if (each->isVisibleTo(&window) && (each->focusPolicy() & Qt::TabFocus) != 0) {
                EXPECT_FALSE(each->accessibleName().isEmpty() &&
                             static_cast<const QObject*>(each)->property("text").toString().isEmpty())
                    << tab << ": " << each->metaObject()->className();
            }
        }
        window.resize(560, 340);
        turnLoop();
        EXPECT_LE(window.minimumSizeHint().width(), 560) << tab;
        EXPECT_LE(window.minimumSizeHint().height(), 340) << tab;
        for (const auto* page : window.findChildren<QScrollArea*>()) {
            if (page->isVisibleTo(&window)) {
                EXPECT_LE(page->widget()->width(), page->viewport()->width()) << tab;
            }
        }
    }
}

} // namespace
} // namespace lumenvale
