// SPDX-License-Identifier: MIT
// The editor over the real display store among random users, hands on monitors, cables, refreshes and sleep. When
// all has settled an active preset matches the screen, and a preset that nothing has been done against since it
// was applied is active and on every monitor that it names.
#include "presets/EditorScript.h"
#include "support/RandomSteps.h"

#include <cmath>

namespace lumenvale {
namespace {

bool isShown(const DisplayInfo& display, double wanted)
{
    const double level = quantise(display, wanted);
    if (display.method == ControlMethod::ddc)
        return std::trunc(*display.brightness * display.maximum) == std::trunc(level * display.maximum);
    return std::abs(*display.brightness - level) <= 0.0001;
}

constexpr char steps[] = "activate; activate; select; open %d; close; revert; edit; edit; delete; add; set %d %l;"
                         "turn %d %l; writes %d differ; writes %d unread; writes %d succeed; writes %d succeed;"
                         "unreadable %d; readable %d; refresh; refresh 300; move %n %n; cable %d;"
                         "system screensSleep; system screensWake; system sleep; system wake;"
                         "wait %t; wait %t; wait %t; wait %t; wait %t; wait %t; wait %t";

using Levels = std::map<std::string, double>;

class PresetWorld : public EditorScript {
public:
    explicit PresetWorld(unsigned seed) : random(seed, "ABCD")
    {
        verbs["turn"] = [this](auto& w) { // the monitor's own buttons, which know its units only
            if (!hardware.monitors.contains(w[1]))
                return;
            const double units = hardware.monitors[w[1]].maximum;
            hardware.monitors[w[1]].brightness = std::round(std::stod(w[2]) * units) / units;
        };
        run("plug A native; plug B 255; plug C; plug D; refresh; answers; monitor");
        for (int count = 0; count < 3; ++count) {
            Levels values = levels(wordsOf(random.next("A %l B %l C %l D %l")), 0);
            for (auto& [display, level] : values)
                level = quantise(shown(display), level);
            presets.addPreset(std::move(values), {});
        }
    }

    void step()
    {
        const std::string step = random.next(steps);
        const std::string verb = wordsOf(step)[0];
        const Uuid preset = presets.presets->at(random.pick(presets.presets->size())).id;
        SCOPED_TRACE(step + " " + preset.toString());
        if (verb == "activate" || verb == "select" || verb == "delete") {
            choose(verb, preset);
        } else if (verb == "revert" || verb == "edit") {
            change(verb);
        } else {
            perform(step);
            for (unsigned answers = verb == "wait" ? random.pick(4) : 0; answers > 0; --answers) {
                if (hardware.waitingCount() > 0)
                    hardware.answer();
            }
            note(step, verb);
        }
        turn();
    }

    void settle()
    {
        perform("calm");
        for (int round = 0; round < 70; ++round) {
            perform("wait 100");
            perform("answers");
        }
        EXPECT_FALSE(editor->isPreparing.get());
        const BrightnessPreset* active = presets.preset(editor->activePresetID->value_or(Uuid()));
        for (const auto& [id, level] : active ? active->values : Levels()) {
            const DisplayInfo* display = store->display(id);
            EXPECT_TRUE(!display || !display->brightness || isShown(*display, level)) << id << " " << level;
            const auto monitor = hardware.monitors.find(id);
            if (undisturbed && monitor != hardware.monitors.end()) {
                EXPECT_NEAR(monitor->second.brightness, level, 1e-9) << id;
            }
        }
        if (undisturbed) {
            EXPECT_EQ(*editor->activePresetID, undisturbed) << "nothing was done against the preset";
            ++undisturbedCount;
        }
        isEdited = false;
        isListCurrent = true;
    }

    int undisturbedCount = 0;

private:
    void choose(const std::string& verb, const Uuid& preset)
    {
        if (verb == "delete" && (presets.presets->size() < 3 || undisturbed == preset))
            return;
        const auto before = editor->selection.get();
        perform(verb + " " + preset.toString());
        const bool isSelected = verb == "select" && before != editor->selection.get();
        if (isSelected)
            undisturbed.reset();
        if (verb == "activate" || (isSelected && editor->settingsVisible()))
            applied(preset);
    }
    void change(const std::string& verb)
    {
        const auto session = editor->session.get();
        if (!session)
            return;
        const std::string display(1, "ABCD"[random.pick(4)]);
        if (verb == "revert" && editor->revert())
            applied(session->savedPreset.id);
        if (verb == "edit" && store->display(display)) {
            perform(random.next("edit " + session->savedPreset.id.toString() + " " + display + " %l"));
            isEdited = true;
        }
    }
    void note(const std::string& step, const std::string& verb)
    {
        const bool isRefresh = verb == "refresh" || step == "system wake"; // drops the levels of edits
        const bool isHarmless = verb == "wait" || verb == "move" || verb == "open" || verb == "system";
        if (isRefresh ? isEdited : !isHarmless) // a preset that is not yet applied never is once the window closes
            undisturbed.reset();
        isListCurrent = isListCurrent && verb != "cable"; // until all has settled
    }
    void applied(const Uuid& id)
    {
        const bool anyFails = std::ranges::any_of(
            hardware.monitors, [](const auto& each) { return each.second.writeError.has_value(); });
        undisturbed = anyFails || !isListCurrent ? std::nullopt : std::optional(id);
        isEdited = false; // no refresh drops the levels of a preset
    }

    RandomSteps random;
    bool isListCurrent = true;       ///< no cable has been changed
    bool isEdited = false;           ///< levels were edited since a preset was applied or all had settled
    std::optional<Uuid> undisturbed; ///< the preset applied last, while nothing was done against it
};

TEST(PresetEditorProperties, AnActivePresetIsOnTheScreenAndOneThatNothingWasDoneAgainstIsActive)
{
    int undisturbedCount = 0;
    for (unsigned seed = 1; seed <= 60 && !testing::Test::HasFailure(); ++seed) {
        PresetWorld world(seed);
        for (unsigned step = 1; step <= 200 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            world.step();
            if (step % (5 + seed % 20) == 0)
                world.settle();
        }
        undisturbedCount += world.undisturbedCount;
    }
    EXPECT_GT(undisturbedCount, 50);
}

TEST(PresetEditorProperties, APresetIsActiveAfterItWasAppliedStoredAndRefreshedOnEveryScale)
{
    for (unsigned units = 1; units <= 65535; units += units < 40 ? 1 : 1 + units / 8) {
        EditorScript world;
        const std::string scale = std::to_string(units);
        world.run("plug A " + scale + "; plug B L" + scale +
                  "; refresh; answers; preset X A 0.505 B 0.335; activate X;"
                  "answers; wait 0; monitor; round 41; refresh; answers; restart; refresh; answers; round 41");
        ASSERT_EQ(*world.editor->activePresetID, world.id("X")) << units;
    }
}

} // namespace
} // namespace lumenvale
