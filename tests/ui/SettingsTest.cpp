// SPDX-License-Identifier: MIT
#include "ViewFixture.h"
#include "preferences/BuildInfo.h"
#include "preferences/GeneralPreferences.h"
#include "support/FakeStartupService.h"
#include "ui/look/KeyboardFocus.h"
#include "ui/settings/DisplayDetail.h"
#include "ui/settings/SettingsFooter.h"
#include "ui/settings/SettingsTabController.h"
#include "ui/settings/Sidebar.h"

#include <QClipboard>
#include <QLineEdit>

namespace lumenvale {
namespace {

struct FakeDiagnostics final : Diagnostics {
    std::vector<Finding> examine(const std::vector<DisplayInfo>& displays) override
    {
        return {{Finding::Kind::problem, displays.front().id, "No permission.", std::to_string(++examinations)},
                {Finding::Kind::problem, "another display", "It is asleep.", ""},
                {Finding::Kind::good, "", "The module is loaded.", ""}};
    }
    int examinations = 0;
};

struct SettingsTest : ViewFixture {
    SettingsTest()
    {
        plug("A", {.brightness = 0.42});
        plug("B", {.method = ControlMethod::apple, .brightness = 0.5});
        replug();
        window.resize(800, 580);
        window.show();
        editor.show(std::nullopt);
        turnLoop();
    }
    Uuid addPreset()
    {
        click(window, "Presets");
        click(window, "Add a preset from the current brightness levels");
        settle();
        return presets.presets.get().back().id;
    }
    Sidebar* sidebar(const QString& name) { return named<Sidebar>(window, name); }
    bool isOn(const QString& name) { return named<QAbstractButton>(window, name)->isChecked(); }
    void expectShown(const QStringList& texts, const QStringList& notShown = {})
    {
        turnLoop();
        for (const QString& text : texts + notShown)
            EXPECT_EQ(shows(window, text), texts.contains(text)) << text.toStdString();
    }

    FakeStartupService startup;
    GeneralPreferences preferences{defaults, startup};
    FakeDiagnostics diagnostics;
    SettingsTabController window{{*store, presets, editor, preferences, diagnostics, clock, portableWords,
                                  BuildInfo{"1.0", "1", clock.wallTime() - std::chrono::hours(1)}}};
};

TEST_F(SettingsTest, TabsFollowTheEditorAndTheEditorFollowsTheTabs)
{
    QWidget* tab = named(window, "Presets");
    QAccessibleInterface* reader = QAccessible::queryAccessibleInterface(tab);
    EXPECT_TRUE(reader->role() == QAccessible::PageTab && !reader->state().selected && isOn("Displays"));
    EXPECT_EQ(reader->parent()->role(), QAccessible::PageTabList);
    editor.selectTab(SettingsTab::presets);
    expectShown({"Select a preset to activate & edit it or add a new one.", "Lumenvale 1.0"});
    EXPECT_TRUE(isOn("Presets") && reader->state().selected);
    pressKey(window, Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(editor.selectedTab.get(), SettingsTab::general);
    pressKey(window, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(editor.selectedTab.get(), SettingsTab::presets);
}

TEST_F(SettingsTest, TheGeneralPageShowsAndChangesThePreferences)
{
    click(window, "General");
    EXPECT_EQ(editor.selectedTab.get(), SettingsTab::general);
    expectShown({}, {"Approval needed"});
    click(window, "Dock");
    EXPECT_EQ(preferences.presentation.get(), AppPresentation::dock);
    startup.statusAfterChange = StartupStatus::requiresApproval;
    click(window, "Launch at Startup");
    click(window, "Open Login Items…");
    EXPECT_EQ(startup.settingsOpened, 1);
    startup.failure = "The disk is full.";
    click(window, "Launch at Startup");
    expectShown({"Could not change Launch at Startup: The disk is full.", "Approval needed"});
    EXPECT_TRUE(isOn("Launch at Startup")) << "the system's state, not the wish";
    startup.current = StartupStatus::unavailable;
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive); // the user comes back
    expectShown({}, {"Approval needed"});
    EXPECT_FALSE(isOn("Launch at Startup"));
}

TEST_F(SettingsTest, TheDisplaysPageShowsMovesAndExplainsTheSelectedDisplay)
{
    Sidebar* list = sidebar("Displays");
    window.activateWindow();
    list->setFocus(Qt::TabFocusReason);
    list->setCurrentRow(0);
    expectShown({"Brightness: 42 / 100 (42%)"}, {"No permission.\n1"});
    for (const auto& [key, row] :
         {std::pair(Qt::Key_Up, 0U), {Qt::Key_Down, 1U}, {Qt::Key_Down, 1U}, {Qt::Key_Up, 0U}}) {
        pressKey(*list, key, Qt::AltModifier);
        EXPECT_EQ(shownIDs().at(row), "A");
        EXPECT_EQ(list->currentRow(), int(row)) << "the selection moves with its display";
    }
    EXPECT_TRUE(showsFocus(*list)) << "it was reached by the keyboard";
    for (const QPointF& place : {QPointF(5, 5), QPointF(5, list->viewport()->height() - 5)}) { // an item; none
        for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
            QMouseEvent event(type, place, place, Qt::LeftButton, Qt::LeftButton, {});
            QApplication::sendEvent(list->viewport(), &event);
        }
        EXPECT_TRUE(!showsFocus(*list) && list->selectedItems().size() == 1);
    }
    click(window, "Presets"); // which hides the list and moves the focus on
    EXPECT_FALSE(showsFocus(*QApplication::focusWidget()));
    click(window, "Displays");
    hardware.monitors["A"].method = ControlMethod::unavailable;
    replug();
    expectShown({QString::fromStdString(store->display("A")->status), "No permission.\n1"},
                {"It is asleep.", "The module is loaded."});
    click(window, "Copy all details of this display");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().contains("Identifier: A"));
    store->setBrightness("B", 0.9);
    settle();
    EXPECT_EQ(list->item(1)->data(Qt::AccessibleTextRole), "Name of B, 90.0%");
    expectShown({"No permission.\n1"}); // only a refresh is a reason to examine again
    replug();
    expectShown({"No permission.\n2"});
    unplug("A");
    unplug("B");
    replug();
    expectShown({"Connect a display and refresh."});
}

TEST_F(SettingsTest, APresetIsAddedEditedLiveRevertedAndDeleted)
{
    const Uuid id = addPreset();
    editor.select(std::nullopt);
    window.activateWindow();
    sidebar("Presets")->setFocus(Qt::TabFocusReason);
    expectShown({"Select a preset to activate & edit it or add a new one."}); // the focus alone chooses nothing
    pressKey(*sidebar("Presets"), Qt::Key_Space);
    LevelSlider* a = slider(window, "A");
    a->request(0.8);
    settle();
    EXPECT_EQ(hardware.monitors["A"].brightness, 0.8);
    EXPECT_EQ(slider(window, "A"), a) << "the row is kept";
    click(window, "Revert");
    settle();
    EXPECT_EQ(a->value(), 0.42);
    expectShown({"Active", "Reverted this editing session and restored the saved preset."});
    auto* name = window.findChild<QLineEdit*>("presetName");
    name->selectAll();
    QKeyEvent typing(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
    QApplication::sendEvent(name, &typing);
    turnLoop();
    EXPECT_EQ(presets.preset(id)->name, " ");
    EXPECT_EQ(sidebar("Presets")->item(0)->data(Qt::AccessibleTextRole), "Untitled preset, F16");

    store->startMonitoring();
    hardware.monitors["B"].brightness = 0.9;
    settle();
    BrightnessPreset changed = *presets.preset(id);
    changed.values = {{"A", 0.42}, {"GONE", 0.456}, {"UNNAMED", 1.0}};
    changed.displayNames["GONE"] = "Living room TV";
    presets.update(changed);
    expectShown({"Not active", "Living room TV", "45.6% · Disconnected", "Disconnected display",
                 "Name of B (not in this preset)"});
    store->setBrightness("B", 0.3);
    editor.select(std::nullopt);
    editor.select(PresetSelection{id});
    turnLoop();
    EXPECT_FALSE(slider(window, "A")->isEnabled()) << "a change now would be lost";
    settle();
    EXPECT_TRUE(slider(window, "A")->isEnabled());
    click(window, "Delete preset");
    expectShown({"Select a preset to activate & edit it or add a new one."});
}

TEST_F(SettingsTest, AShortcutIsRecordedRefusedAndDeleted)
{
    addPreset();
    addPreset();
    auto* recorder = named<QAbstractButton>(window, "Record keyboard shortcut");
    click(window, "Record keyboard shortcut");
    EXPECT_EQ(recorder->text(), "Press a shortcut…");
    expectShown({"Press a key with any combination of ⌘, ⌥, ⌃, and ⇧. Escape cancels."}, {"Delete shortcut"});
    editor.handleKeyEvent({.keyCode = 106}); // F16, which the first preset has
    expectShown({"This shortcut is already assigned to another preset.", "Cancel"});
    editor.handleKeyEvent({.keyCode = escapeKeyCode, .modifiers = KeyModifier::shift});
    expectShown({"Works while Lumenvale is running, even in other apps."}, {"Cancel"});
    EXPECT_EQ(recorder->text(), "⇧⎋");
    click(window, "Delete shortcut");
    EXPECT_EQ(recorder->text(), "None");
}

TEST_F(SettingsTest, EverythingThatTakesTheFocusHasANameAndNothingIsCutOffAtTheSmallestSize)
{
    addPreset();
    window.resize(560, 340);
    for (const char* tab : {"General", "Displays", "Presets"}) {
        click(window, tab);
        EXPECT_EQ(QSize(560, 340).expandedTo(window.minimumSizeHint()), QSize(560, 340)) << tab;
        for (QWidget* each : window.findChildren<QWidget*>()) {
            const auto* page = dynamic_cast<ScrollPage*>(each);
            if (!each->isVisibleTo(&window))
                continue;
            EXPECT_TRUE((each->focusPolicy() & Qt::TabFocus) == 0 || !spoken(*each).isEmpty()) << tab;
            EXPECT_TRUE(!page || page->widget()->width() <= page->viewport()->width()) << tab;
        }
    }
    LevelSlider* a = slider(window, "A");
    for (const bool focused : {false, true}) {
        window.activateWindow();
        focused ? a->setFocus() : a->clearFocus();
        turnWheel(*a, 120);
        EXPECT_DOUBLE_EQ(a->value(), focused ? 0.43 : 0.42) << "a page that scrolls keeps the wheel";
    }
}

TEST(DetailsTest, ModesAndTimesAreSaidAsFarAsTheyAreKnownAndAsTheLocaleWritesThem)
{
    DisplayInfo display;
    display.pixelWidth = 3840;
    display.logicalWidth = 1920;
    display.pixelHeight = display.logicalHeight = 1080;
    display.refreshRate = 59.9402;
    EXPECT_EQ(identityRows(display).at(1).second, "3840 × 1080 (looks like 1920 × 1080), 59.94 Hz");
    const QDateTime time(QDate(2026, 11, 21), QTime(18, 4, 5));
    EXPECT_EQ(buildTimeText(time, QLocale("en_US")), "Nov 21, 2026, 6:04:05 PM");
}

} // namespace
} // namespace lumenvale
