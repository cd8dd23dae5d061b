// SPDX-License-Identifier: MIT
// The editor over the real display store among random users, hands on monitors, cables, refreshes and sleep. When
// all has settled an active preset matches the screen, and a preset that nothing has been done against since it
// was applied is active and on every monitor that it names.
#include "presets/PresetEditor.h"
#include "support/RandomWorld.h"

#include <algorithm>
#include <cmath>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

bool isShown(const DisplayInfo& display, double level)
{
    if (display.method == ControlMethod::ddc)
        return std::trunc(*display.brightness * display.maximum) == std::trunc(level * display.maximum);
    return std::abs(*display.brightness - level) <= 0.0001;
}

class PresetWorld : public RandomWorld {
public:
    explicit PresetWorld(unsigned seed) : RandomWorld(seed, {"A", "B", "C", "D"})
    {
        store->brightnessObserved = [this](const auto& changed) { editor.displaysChanged(changed); };
        listObserver = store->displays.subscribe([this](const auto& list) {
            editor.displaysChanged(list);
            isListNew = true;
        });
        store->startMonitoring();
        refresh();
        for (int count = 0; count < 3; ++count) {
            std::map<std::string, double> levels;
            for (const std::string& each : names)
                levels[each] = quantise(shown(each), level());
            presets.addPreset(std::move(levels), {});
        }
    }
    ~PresetWorld() override { listObserver.reset(); }

    void step()
    {
        const unsigned choice = pick(18);
        if (choice < 2)
            activate();
        else if (choice < 3)
            select();
        else if (choice < 4)
            pick(2) == 0 ? editor.show(name()) : close();
        else if (choice < 5)
            revert();
        else if (choice < 7)
            edit();
        else if (choice < 8)
            disturb([this] { store->setBrightness(name(), level()); });
        else if (choice < 9)
            disturb([this] { changeByHand(name()); });
        else if (choice < 10)
            requestRefresh();
        else if (choice < 11)
            pick(3) == 0 ? replug() : store->moveDisplays({pick(4)}, pick(5));
        else if (choice < 12)
            addOrDelete();
        else if (choice < 13)
            sleep();
        else
            passTime();
    }

    void settle()
    {
        wakeEverything();
        for (int round = 0; round < 70; ++round) {
            clock.advance(100ms);
            hardware.answerAll();
            turn();
        }
        EXPECT_FALSE(editor.isPreparing.get());
        const std::optional<Uuid> active = editor.activePresetID.get();
        if (active)
            checkMatches(*active);
        if (undisturbed) {
            EXPECT_EQ(active, undisturbed) << "nothing was done against the preset";
            checkReached(*undisturbed);
            ++undisturbedCount;
        }
        isEdited = false;
        isListCurrent = true;
    }

    int undisturbedCount = 0;

private:
    Uuid anyPreset() { return presets.presets->at(pick(presets.presets->size())).id; }

    void turn()
    {
        if (std::exchange(isListNew, false))
            editor.displaysChanged(store->displays.get());
    }

    void applied(const Uuid& id)
    {
        const bool anyFails = std::ranges::any_of(
            hardware.monitors, [](const auto& each) { return each.second.writeError.has_value(); });
        undisturbed = anyFails || !isListCurrent ? std::nullopt : std::optional(id);
        isEdited = false; // no refresh drops the levels of a preset
    }
    void activate()
    {
        const Uuid id = anyPreset();
        editor.activate(id);
        applied(id);
    }
    void select()
    {
        const Uuid id = anyPreset();
        const auto before = editor.selection.get();
        editor.select(PresetSelection{id});
        if (before == editor.selection.get())
            return;
        undisturbed.reset();
        if (editor.settingsVisible())
            applied(id);
    }
    void close()
    {
        disturb([this] { editor.settingsClosed(); }); // a preset that is not yet applied never is
    }
    void revert()
    {
        if (!editor.session.get())
            return;
        const Uuid id = editor.session.get()->savedPreset.id;
        if (editor.revert())
            applied(id);
    }
    void edit()
    {
        if (!editor.session.get())
            return;
        const std::string id = name();
        if (const DisplayInfo* display = store->display(id)) {
            editor.setLevel(editor.session.get()->savedPreset.id, *display, level());
            isEdited = true;
        }
    }
    template <typename Change>
    void disturb(Change change)
    {
        change();
        undisturbed.reset();
    }
    void requestRefresh()
    {
        store->requestRefresh(pick(2) * 300ms);
        if (isEdited)
            undisturbed.reset();
    }
    void replug()
    {
        disturb([this] { changeCables(name()); });
        isListCurrent = false; // until all has settled
    }
    void passTime()
    {
        clock.advance(std::chrono::milliseconds(pick(150)));
        for (unsigned answers = pick(4); answers > 0 && !hardware.waiting().empty(); --answers)
            hardware.answer();
        turn();
    }
    void addOrDelete()
    {
        if (pick(2) == 0) {
            disturb([this] { editor.addPresetFromCurrentLevels(); });
        } else if (presets.presets->size() > 2) {
            const Uuid id = anyPreset();
            editor.deletePreset(id);
            if (undisturbed == id)
                undisturbed.reset();
        }
    }
    void sleep()
    {
        const SystemEvent event = sleepOrWake();
        events.send(event);
        if (event == SystemEvent::systemDidWake && isEdited)
            undisturbed.reset();
    }

    void checkMatches(const Uuid& id)
    {
        const BrightnessPreset* preset = presets.preset(id);
        ASSERT_NE(preset, nullptr);
        for (const DisplayInfo& each : store->displays.get()) {
            const auto level = preset->values.find(each.id);
            if (each.brightness && level != preset->values.end()) {
                EXPECT_TRUE(isShown(each, level->second)) << each.id << " " << *each.brightness;
            }
        }
    }
    void checkReached(const Uuid& id)
    {
        for (const auto& [display, wanted] : presets.preset(id)->values) {
            const auto monitor = hardware.monitors.find(display);
            if (monitor != hardware.monitors.end()) {
                EXPECT_NEAR(monitor->second.brightness, wanted, 1e-9) << display;
            }
        }
    }

    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
    Subscription listObserver;
    bool isListNew = false;
    bool isListCurrent = true;       ///< no cable has been changed
    bool isEdited = false;           ///< levels were edited since a preset was applied or all had settled
    std::optional<Uuid> undisturbed; ///< the preset applied last, while nothing was done against it
};

TEST(PresetEditorProperties, AnActivePresetIsOnTheScreenAndOneThatNothingWasDoneAgainstIsActive)
{
    int undisturbedCount = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        PresetWorld world(seed);
        for (unsigned step = 1; step <= 200 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            world.step();
            if (step % (5 + seed % 20) == 0)
                world.settle();
        }
        if (testing::Test::HasFailure())
            return;
        undisturbedCount += world.undisturbedCount;
    }
    EXPECT_GT(undisturbedCount, 50);
}

} // namespace
} // namespace lumenvale
