// SPDX-License-Identifier: MIT
// The editor over the real display store among random users, hands on monitors, cables, refreshes and sleep. When
// all has settled an active preset matches the screen, and a preset that nothing has been done against since it
// was applied is active and on every monitor that it names.
#include "presets/PresetEditor.h"
#include "support/StoreFixture.h"

#include <algorithm>
#include <cmath>
#include <random>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

const std::vector<std::string> names{"A", "B", "C", "D"};

bool isShown(const DisplayInfo& display, double level)
{
    if (display.method == ControlMethod::ddc)
        return std::trunc(*display.brightness * display.maximum) == std::trunc(level * display.maximum);
    return std::abs(*display.brightness - level) <= 0.0001;
}

class PresetWorld : public StoreFixture {
public:
    explicit PresetWorld(unsigned seed) : random(seed)
    {
        store->brightnessObserved = [this](const auto& changed) { editor.displaysChanged(changed); };
        listObserver = store->displays.subscribe([this](const auto& list) {
            editor.displaysChanged(list);
            isListNew = true;
        });
        for (const std::string& name : names)
            connect(name);
        store->startMonitoring();
        refresh();
        for (int count = 0; count < 3; ++count) {
            std::map<std::string, double> levels;
            for (const std::string& name : names)
                levels[name] = quantise(shown(name), level());
            presets.addPreset(std::move(levels), {});
        }
    }
    ~PresetWorld() override { listObserver.reset(); }
    void TestBody() override {}

    void step()
    {
        switch (pick(18)) {
        case 0:
        case 1:
            return activate();
        case 2:
            return select();
        case 3:
            return pick(2) == 0 ? editor.show(name()) : close();
        case 4:
            return revert();
        case 5:
        case 6:
            return edit();
        case 7:
            return request();
        case 8:
            return changeByHand();
        case 9:
            return requestRefresh();
        case 10:
            return pick(3) == 0 ? changeCables() : store->moveDisplays({pick(4)}, pick(5));
        case 11:
            return addOrDelete();
        case 12:
            return sleepOrWake();
        default:
            clock.advance(std::chrono::milliseconds(pick(150)));
            for (unsigned answers = pick(4); answers > 0 && !hardware.waiting().empty(); --answers)
                hardware.answer();
            turn();
        }
    }

    void settle()
    {
        events.send(SystemEvent::screensDidWake);
        store->setWindowVisible(true);
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
    unsigned pick(std::size_t count) { return static_cast<unsigned>(random() % count); }
    const std::string& name() { return names[pick(names.size())]; }
    double level() { return pick(1001) / 1000.0; }
    Uuid anyPreset() { return presets.presets->at(pick(presets.presets->size())).id; }

    void connect(const std::string& id)
    {
        plug(id, {.method = id == "A" ? ControlMethod::apple : ControlMethod::ddc,
                  .maximum = static_cast<std::uint16_t>(id == "B" ? 255 : 100)});
    }
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
        editor.settingsClosed(); // a preset that is not yet applied never is
        undisturbed.reset();
    }
    void revert()
    {
        if (!editor.session.get())
            return;
        const Uuid id = editor.session.get()->savedPreset.id;
        if (editor.revert())
            applied(id);
        isEdited = true; // its levels may go through write tasks, which a refresh drops
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
    void request()
    {
        store->setBrightness(name(), level());
        undisturbed.reset();
    }
    void changeByHand()
    {
        const auto monitor = hardware.monitors.find(name());
        if (monitor == hardware.monitors.end())
            return;
        monitor->second.brightness = std::round(level() * monitor->second.maximum) / monitor->second.maximum;
        monitor->second.writeError.reset();
        if (pick(3) == 0)
            monitor->second.writeError = pick(2) == 0 ? BrightnessError::mismatch : BrightnessError::readFailed;
        undisturbed.reset();
    }
    void requestRefresh()
    {
        store->requestRefresh(pick(2) * 300ms);
        if (isEdited)
            undisturbed.reset();
    }
    void changeCables()
    {
        const std::string id = name();
        if (hardware.monitors.contains(id))
            unplug(id);
        else
            connect(id);
        events.send(SystemEvent::screenParametersChanged);
        undisturbed.reset();
        isListCurrent = false; // until all has settled
    }
    void addOrDelete()
    {
        if (pick(2) == 0) {
            editor.addPresetFromCurrentLevels();
            undisturbed.reset();
        } else if (presets.presets->size() > 2) {
            const Uuid id = anyPreset();
            editor.deletePreset(id);
            if (undisturbed == id)
                undisturbed.reset();
        }
    }
    void sleepOrWake()
    {
        const SystemEvent kinds[] = {SystemEvent::screensDidSleep, SystemEvent::systemWillSleep,
                                     SystemEvent::screensDidWake, SystemEvent::systemDidWake};
        const SystemEvent event = kinds[pick(4)];
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

    std::mt19937 random;
    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
    Subscription listObserver;
    bool isListNew = false;
    bool isListCurrent = true;       ///< no cable has been changed
    bool isEdited = false;           ///< levels were edited since all had settled
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
