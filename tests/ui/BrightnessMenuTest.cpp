// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessMenu.h"
#include "ViewFixture.h"
#include "ui/controls/Labels.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace lumenvale {
namespace {

struct BrightnessMenuTest : ViewFixture {
    /// Shows the panel at its preferred size, without turning the loop.
    void open()
    {
        replug();
        auto* layout = new QVBoxLayout(&panel);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&menu);
        const auto count = [](const auto& list) { return int(list.get().size()); };
        panel.resize(panelWidth, int(preferredHeight(count(store->displays), count(presets.presets))));
        panel.show();
    }
    void addPreset(const std::string& name) { presets.rename(presets.addPreset({{"A", 0.5}}, {}).id, name); }
    LevelSlider* slider(const QString& id) { return ViewFixture::slider(panel, id); }
    QPoint place(const QString& name) { return named(panel, name)->mapTo(&panel, QPoint()); }
    bool isEnabled(const QString& name) { return named(panel, name)->isEnabled(); }

    int settingsOpened = 0;
    std::vector<std::string> applied;
    BrightnessPanel panel;
    const BrightnessMenu::ApplyPreset apply = [this](const BrightnessPreset& preset) {
        applied.push_back(preset.name);
    };
    BrightnessMenu menu{*store, presets, editor, clock, [this] { ++settingsOpened; }, apply};
};

TEST_F(BrightnessMenuTest, FillsItsPreferredHeightAtOnceAndScrollsWhereItIsShorter)
{
    for (const char* id : {"A", "B", "C"})
        plug(id);
    for (const char* name : {"Day", "Evening", "Night"})
        addPreset(name);
    open();
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&panel)->role(), QAccessible::Window);
    EXPECT_EQ(place("Decrease Name of A brightness"), QPoint(12, 38));
    EXPECT_EQ(place("Night").y(), 271);
    const QScrollBar* bar = panel.findChild<QScrollArea*>()->verticalScrollBar();
    for (const int height : {342, 341, 200}) { // one less is a window manager's step at a scale of 1.5
        panel.resize(panelWidth, height);
        turnLoop();
        EXPECT_EQ(bar->isVisible(), height == 200) << height;
        EXPECT_EQ(place("Settings"), QPoint(12, height - 30)) << "the footer stays";
    }
}

TEST_F(BrightnessMenuTest, RowsStayTheSameWhileTheirValuesAndOrderChangeAndTabFollowsTheOrder)
{
    plug("A", {.brightness = 0.3});
    plug("B", {.brightness = 0.0});
    addPreset("Day");
    open();
    LevelSlider *const a = slider("A"), *const b = slider("B");
    hardware.monitors["A"].brightness = 0.7;
    replug();
    EXPECT_DOUBLE_EQ(a->value(), 0.7);
    store->moveDisplays({1}, 0);
    turnLoop();
    EXPECT_TRUE(slider("A") == a && slider("B") == b);

    const auto press = [this](Qt::KeyboardModifiers modifiers) {
        QWidget* at = panel.focusWidget() ? panel.focusWidget() : &panel;
        pressKey(*at, modifiers & Qt::ShiftModifier ? Qt::Key_Backtab : Qt::Key_Tab, modifiers);
        return spoken(*panel.focusWidget());
    };
    for (const char* name :
         {"Name of B brightness", "Increase Name of B brightness", "Decrease Name of A brightness",
          "Name of A brightness", "Increase Name of A brightness", "Day", "Settings", "Refresh", "Quit Lumenvale"})
        EXPECT_EQ(press({}), name);
    for (const auto modifier : {Qt::ControlModifier, Qt::MetaModifier})
        EXPECT_EQ(press(modifier), "Quit Lumenvale") << "passed on";
    EXPECT_EQ(press(Qt::ShiftModifier), "Refresh");
    unplug("B");
    replug();
    EXPECT_TRUE(slider("A") == a && !slider("B"));
}

TEST_F(BrightnessMenuTest, SlidersAndStepButtonsSetTheBrightnessWhereItCanBeSet)
{
    plug("A", {.brightness = 0.5});
    plug("B", {.brightness = 0.99});
    plug("C", {.method = ControlMethod::unavailable});
    plug("D", {.writeError = BrightnessError::mismatch});
    plug("E", {.method = ControlMethod::apple, .brightness = 0.5});
    open();
    slider("A")->request(0.254);
    for (const char* verb : {"Increase", "Increase", "Decrease"}) // and no redraw between them
        named<QAbstractButton>(panel, QString(verb) + " Name of A brightness")->click();
    pressKey(*slider("E"), Qt::Key_Right);
    auto* const increaseB = named<QAbstractButton>(panel, "Increase Name of B brightness");
    increaseB->setFocus();
    pressKey(*increaseB, Qt::Key_Space);
    EXPECT_EQ(panel.focusWidget(), slider("B")) << "no other control, which the next key would work";
    slider("D")->request(0.0);
    for (const char* name : {"Increase Name of B", "Decrease Name of D", "Decrease Name of C", "Name of C"})
        EXPECT_FALSE(isEnabled(QString(name) + " brightness")) << name;
    settle();
    const auto problem = QString::fromStdString(std::string(description(BrightnessError::mismatch)));
    EXPECT_TRUE(shows<SymbolLabel>(panel, problem) && spoken(*slider("D"), QAccessible::Description) == problem);
    EXPECT_EQ(spoken(*slider("C"), QAccessible::Description).toStdString(), store->display("C")->status);
    EXPECT_TRUE(shows(panel, "26%") && shows(panel, "—") && spoken(*slider("A"), QAccessible::Value) == "26%");
    EXPECT_DOUBLE_EQ(hardware.monitors["A"].brightness, 0.26);
    EXPECT_DOUBLE_EQ(hardware.monitors["B"].brightness, 1.0);
    EXPECT_NEAR(hardware.monitors["E"].brightness, 0.501, 1e-9) << "a native display's own step";

    hardware.monitors["A"].method = ControlMethod::unavailable;
    store->requestRefresh();
    slider("A")->request(0.7); // before the redraw that disables it
    turnLoop();
    EXPECT_DOUBLE_EQ(slider("A")->value(), 0.0) << "not granted";
}

TEST_F(BrightnessMenuTest, WhatKeepsADisplayFromBeingSetIsReadBelowItsSliderUntilAWriteSucceeds)
{
    store->obstacle = [](const DisplayInfo& display) { return "No permission for " + display.id + ". Ask."; };
    plug("A", {.writeError = BrightnessError::writeFailed});
    plug("B", {.writeError = BrightnessError::mismatch});
    open();
    for (const char* id : {"A", "B"})
        slider(id)->request(0.2);
    settle();
    EXPECT_TRUE(shows<TextLabel>(panel, "No permission for A. Ask."));
    EXPECT_EQ(store->display("B")->error, description(BrightnessError::mismatch)) << "it was set, and lost again";
    EXPECT_GT(menu.extraHeight(), 10);
    hardware.monitors["A"].writeError.reset();
    slider("A")->request(0.3);
    settle();
    EXPECT_TRUE(!shows<TextLabel>(panel, "No permission for A. Ask.") && menu.extraHeight() == 0);
}

TEST_F(BrightnessMenuTest, PresetsAreListedAndAppliedTheFooterWorksAndTheAppearanceIsFollowedLive)
{
    hardware.holdsAnswers = true;
    open();
    EXPECT_TRUE(shows(panel, "Finding your displays…") && !shows(panel, "Presets"));
    hardware.answerAll();
    turnLoop();
    EXPECT_TRUE(shows(panel, "No displays detected"));
    const std::string markup = "<b>R&D</b>, " + std::string(80, 'W');
    addPreset("Evening");
    addPreset(markup);
    editor.activePresetID.set(presets.presets.get().front().id);
    turnLoop();
    auto* row = named<QAbstractButton>(panel, "Evening");
    auto* plain = named<QAbstractButton>(panel, QString::fromStdString(markup));
    EXPECT_TRUE(spoken(*row, QAccessible::Value) == "Active" && spoken(*plain, QAccessible::Value).isEmpty());
    EXPECT_TRUE(plain->shortcut().isEmpty()) << "Alt-D would apply it";
    EXPECT_TRUE(plain->toolTip().contains("&lt;b&gt;R&amp;D&lt;/b&gt;"));
    for (const char* button : {"Refresh", "Settings", "Evening"})
        click(panel, button);
    EXPECT_TRUE(shows(panel, "Finding your displays…") && settingsOpened == 1);
    QAccessible::queryAccessibleInterface(row)->actionInterface()->doAction("Press");
    EXPECT_EQ(applied, (std::vector<std::string>{"Evening", "Evening"}));
    for (const Appearance appearance : {Appearance::dark, Appearance::light, Appearance::system}) {
        Theme::set(appearance);
        turnLoop();
        EXPECT_EQ(panel.grab().toImage().pixelColor(300, 85).lightness() < 100, appearance == Appearance::dark);
    }
}

} // namespace
} // namespace lumenvale
