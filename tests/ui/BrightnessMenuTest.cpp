// SPDX-License-Identifier: MIT
#include "ui/panel/BrightnessMenu.h"
#include "support/StoreFixture.h"
#include "support/Views.h"
#include "ui/controls/HoldRepeatButton.h"
#include "ui/controls/Labels.h"
#include "ui/controls/LevelSlider.h"
#include "ui/controls/Buttons.h"
#include "ui/look/Theme.h"
#include "ui/panel/BrightnessPanel.h"
#include "ui/panel/PresetRow.h"

#include <QAccessible>
#include <QImage>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

namespace lumenvale {
namespace {

struct BrightnessMenuTest : StoreFixture {
    BrightnessMenuTest() { hardware.holdsAnswers = false; }

    /// Shows the panel at its preferred size.
    void open()
    {
        auto* layout = new QVBoxLayout(&panel);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&menu);
        const double height =
            preferredHeight(int(store->displays.get().size()), int(presets.presets.get().size()));
        panel.resize(panelWidth, int(height));
        panel.show();
    }
    void replug()
    {
        store->requestRefresh();
        turnLoop();
    }
    /// Reads the displays that are plugged in before it opens.
    void openWithDisplays()
    {
        replug();
        open();
        turnLoop();
    }
    /// Lets the write tasks' waits pass.
    void settle()
    {
        clock.advance(std::chrono::milliseconds(500));
        turnLoop();
    }
    Uuid addPreset(const char* name, double level)
    {
        const Uuid id = presets.addPreset({{"A", level}}, {{"A", "Name of A"}}).id;
        presets.rename(id, name);
        return id;
    }
    LevelSlider* slider(const QString& id) { return named<LevelSlider>(panel, "Name of " + id + " brightness"); }
    HoldRepeatButton* minus(const QString& id)
    {
        return named<HoldRepeatButton>(panel, "Decrease Name of " + id + " brightness");
    }
    HoldRepeatButton* plus(const QString& id)
    {
        return named<HoldRepeatButton>(panel, "Increase Name of " + id + " brightness");
    }
    PresetRow* presetRow(const QString& name) { return named<PresetRow>(panel, name); }

    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
    int settingsOpened = 0;
    std::vector<std::string> applied;
    BrightnessPanel panel;
    BrightnessMenu menu{*store,
                        presets,
                        editor,
                        clock,
                        [this] { ++settingsOpened; },
                        [this](const BrightnessPreset& preset) { applied.push_back(preset.name); }};
};

TEST_F(BrightnessMenuTest, WithoutDisplaysItSaysWhyAndItsFooterRefreshesAndOpensTheSettings)
{
    hardware.holdsAnswers = true;
    openWithDisplays();
    EXPECT_TRUE(shows<ElidedLabel>(panel, "Finding your displays…"));
    hardware.answerAll();
    turnLoop();
    EXPECT_TRUE(shows<ElidedLabel>(panel, "No displays detected"));
    plug("A");
    hardware.holdsAnswers = false;
    click(panel, "Refresh");
    EXPECT_TRUE(slider("A"));
    click(panel, "Settings");
    EXPECT_EQ(settingsOpened, 1);
}

TEST_F(BrightnessMenuTest, FillsItsPreferredHeightAtOnceAndScrollsWhereItIsShorter)
{
    for (const char* id : {"A", "B", "C"})
        plug(id);
    for (const char* name : {"Day", "Evening", "Night"})
        addPreset(name, 0.5);
    replug();
    open(); // and no turn of the loop
    const auto top = [this](const QWidget* widget) { return widget->mapTo(&panel, QPoint()).y(); };
    EXPECT_EQ(top(minus("A")), 38);
    EXPECT_EQ(top(presetRow("Night")), 271);
    EXPECT_EQ(top(named<SmallButton>(panel, "Settings")), 312);
    EXPECT_EQ(plus("A")->mapTo(&panel, QPoint()).x(), 296);
    EXPECT_EQ(slider("A")->mapTo(&panel, QPoint()).x() + LevelSlider::overhang, 50);

    auto* page = panel.findChild<QScrollArea*>();
    EXPECT_EQ(page->verticalScrollBar()->maximum(), 0);
    panel.resize(panelWidth, panel.height() - 1); // by a window manager, at a scale of 1.5
    turnLoop();
    EXPECT_FALSE(page->verticalScrollBar()->isVisible());
    panel.resize(panelWidth, 200);
    turnLoop();
    EXPECT_TRUE(page->verticalScrollBar()->isVisible());
    EXPECT_EQ(top(named<SmallButton>(panel, "Settings")), 170) << "the footer stays";
    presetRow("Night")->setFocus(Qt::TabFocusReason);
    page->ensureWidgetVisible(presetRow("Night"));
    EXPECT_LE(top(presetRow("Night")) + PresetRow::rowHeight, 161);
}

TEST_F(BrightnessMenuTest, RowsStayTheSameWhileTheirValuesAndOrderChange)
{
    plug("A", {.brightness = 0.3});
    plug("B", {.brightness = 0.6});
    openWithDisplays();
    LevelSlider* const a = slider("A");
    LevelSlider* const b = slider("B");
    EXPECT_DOUBLE_EQ(a->value(), 0.3);
    a->setFocus();
    hardware.monitors["A"].brightness = 0.7;
    replug();
    EXPECT_EQ(slider("A"), a);
    EXPECT_DOUBLE_EQ(a->value(), 0.7);

    store->moveDisplays({1}, 0);
    turnLoop();
    EXPECT_EQ(slider("A"), a);
    EXPECT_EQ(slider("B"), b);
    EXPECT_LT(b->mapTo(&panel, QPoint()).y(), a->mapTo(&panel, QPoint()).y());
    EXPECT_EQ(panel.focusWidget(), a);

    plug("C");
    unplug("B");
    replug();
    EXPECT_EQ(slider("A"), a);
    EXPECT_FALSE(slider("B"));
    EXPECT_TRUE(slider("C"));
}

TEST_F(BrightnessMenuTest, MovingASliderAndSteppingSetTheBrightness)
{
    plug("A", {.brightness = 0.5});
    openWithDisplays();
    slider("A")->request(0.254);
    EXPECT_DOUBLE_EQ(store->display("A")->brightness.value(), 0.25) << "quantised, and shown at once";
    turnLoop();
    EXPECT_DOUBLE_EQ(slider("A")->value(), 0.25);

    plus("A")->click();
    plus("A")->click(); // before the first one's redraw
    EXPECT_DOUBLE_EQ(store->display("A")->brightness.value(), 0.27);
    minus("A")->click();
    settle();
    EXPECT_DOUBLE_EQ(hardware.monitors["A"].brightness, 0.26);
    EXPECT_TRUE(shows<NumberLabel>(panel, "26%"));
}

TEST_F(BrightnessMenuTest, StepButtonsAreEnabledWhereAStepIsPossible)
{
    plug("A", {.brightness = 0.0});
    plug("B", {.brightness = 0.99});
    plug("C", {.method = ControlMethod::unavailable});
    openWithDisplays();
    EXPECT_FALSE(minus("A")->isEnabled());
    EXPECT_TRUE(plus("A")->isEnabled());
    EXPECT_FALSE(slider("C")->isEnabled() || minus("C")->isEnabled() || plus("C")->isEnabled());
    EXPECT_EQ(slider("C")->accessibleDescription().toStdString(), store->display("C")->status);
    EXPECT_TRUE(shows<NumberLabel>(panel, "—"));

    sendMouse(*plus("B"), QEvent::MouseButtonPress, {5, 5});
    turnLoop();
    EXPECT_FALSE(plus("B")->isEnabled()) << "it has reached its end";
    settle();
    EXPECT_DOUBLE_EQ(hardware.monitors["B"].brightness, 1.0);
}

TEST_F(BrightnessMenuTest, ARequestThatIsRefusedShowsItsProblemAndOneThatIsNotGrantedTheOldLevel)
{
    plug("A", {.writeError = BrightnessError::mismatch});
    openWithDisplays();
    const auto text = QString::fromStdString(std::string(description(BrightnessError::mismatch)));
    EXPECT_FALSE(named<SymbolLabel>(panel, text));
    slider("A")->request(0.9);
    settle();
    auto* symbol = named<SymbolLabel>(panel, text);
    ASSERT_TRUE(symbol);
    EXPECT_EQ(symbol->toolTip(), toolTipText(text));
    EXPECT_EQ(slider("A")->accessibleDescription(), text);

    hardware.monitors["A"].method = ControlMethod::unavailable;
    store->requestRefresh();
    slider("A")->request(0.7); // before the redraw that disables it
    turnLoop();
    EXPECT_FALSE(slider("A")->isEnabled());
    EXPECT_DOUBLE_EQ(slider("A")->value(), store->display("A")->brightness.value_or(0.0));
}

TEST_F(BrightnessMenuTest, PresetsAreListedMarkedAndApplied)
{
    plug("A");
    openWithDisplays();
    EXPECT_FALSE(shows<ElidedLabel>(panel, "Presets"));
    const Uuid evening = addPreset("Evening", 0.2);
    addPreset("  ", 0.3);
    turnLoop();
    EXPECT_TRUE(shows<ElidedLabel>(panel, "Presets"));
    PresetRow* const row = presetRow("Evening");
    ASSERT_TRUE(row);
    EXPECT_EQ(row->accessibleDescription(), "");
    editor.activePresetID.set(evening);
    turnLoop();
    EXPECT_EQ(presetRow("Evening"), row);
    EXPECT_EQ(row->accessibleDescription(), "Active");
    click(panel, "Evening");
    QAccessible::queryAccessibleInterface(row)->actionInterface()->doAction(
        QAccessibleActionInterface::pressAction());
    EXPECT_EQ(applied, (std::vector<std::string>{"Evening", "Evening"}));
}

TEST_F(BrightnessMenuTest, ANameIsOnlyText)
{
    open();
    const std::string name = "<b>R&D</b>, " + std::string(80, 'W');
    addPreset(name.c_str(), 0.2);
    turnLoop();
    PresetRow* const row = presetRow(QString::fromStdString(name));
    ASSERT_TRUE(row);
    EXPECT_TRUE(row->shortcut().isEmpty()) << "Alt-D would apply it";
    EXPECT_TRUE(row->toolTip().contains("&lt;b&gt;R&amp;D&lt;/b&gt;"));
    EXPECT_EQ(QAccessible::queryAccessibleInterface(row)->text(QAccessible::Value), "") << "it is not active";
    ElidedLabel twoLines(TextRole::name);
    ElidedLabel one(TextRole::name);
    twoLines.setText("two\nlines");
    one.setText("two lines");
    EXPECT_EQ(twoLines.sizeHint(), one.sizeHint()) << "drawn with a blank, it needs room for it";
}

TEST_F(BrightnessMenuTest, TabWalksThroughEveryControlAndRound)
{
    plug("A");
    plug("B", {.brightness = 0.0});
    addPreset("Day", 0.5);
    openWithDisplays();
    store->moveDisplays({1}, 0); // B first
    turnLoop();
    const auto press = [this](Qt::KeyboardModifiers modifiers) {
        QWidget* at = panel.focusWidget() ? panel.focusWidget() : &panel;
        pressKey(*at, modifiers & Qt::ShiftModifier ? Qt::Key_Backtab : Qt::Key_Tab, modifiers);
        return panel.focusWidget()->accessibleName();
    };
    const QStringList order = QString("Name of B brightness|Increase Name of B brightness|"
                                      "Decrease Name of A brightness|Name of A brightness|"
                                      "Increase Name of A brightness|Day|Settings|Refresh|Quit Lumenvale")
                                  .split('|');
    for (const QString& name : order)
        EXPECT_EQ(press({}).toStdString(), name.toStdString());
    press(Qt::ControlModifier);
    EXPECT_EQ(panel.focusWidget()->accessibleName(), order.last()) << "is passed on";
    while (press({}) != order.first()) // past the panel itself, where it has a place in the round
        ASSERT_EQ(panel.focusWidget(), &panel);
    EXPECT_EQ(press({}), order[1]);
    EXPECT_EQ(press(Qt::ShiftModifier), order[0]);
}

TEST_F(BrightnessMenuTest, FollowsTheAppearanceLive)
{
    plug("A");
    Theme::set(Appearance::light);
    openWithDisplays();
    Theme::set(Appearance::dark, QColor(0xFF00AA55));
    turnLoop();
    const QImage dark = panel.grab().toImage();
    EXPECT_LT(dark.pixelColor(170, 85).lightness(), 100);
    const int middle = slider("A")->mapTo(&panel, QPoint(30, 12)).y();
    EXPECT_EQ(dark.pixelColor(60, middle).rgb(), 0xFF00AA55) << "the system's highlight colour";
    Theme::set(Appearance::system);
}

} // namespace
} // namespace lumenvale
