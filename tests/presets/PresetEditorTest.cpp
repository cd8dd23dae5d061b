// SPDX-License-Identifier: MIT
#include "presets/EditorScript.h"

#include <span>

namespace lumenvale {
namespace {

// Display A has 100 units, B is native and the main display. X and Y are presets with F16 and F17.
constexpr char start[] = R"(plug A; plug B native; main B; refresh; answers; preset X A 0.2 B 0.3; preset Y A 0.7
)";

constexpr Scenario applying[] = {
    {"a preset is applied when earlier writes have ended", R"(
        set A 0.4 | A 40% applying
        activate X | active X; preparing yes; selected X; stored none X; tab presets
        wait 90; answer; wait 0 | A 20% applying; B 30.0% applying; message Applied X.; preparing no;
            | > set A 0.4; > set A 0.2
        answers; wait 0 | A 20% verified; B 30.0% verified; > set B 0.3)"},
    {"only the latest of several is applied", R"(
        set A 0.4; activate X; activate Y; activate Z; wait 90; answer
        wait 0; answers | A 70% verified; message Applied Y.; preparing no; > set A 0.7)"},
    {"it reaches a display that answers late, and stays active", R"(
        unplug B; plug B none; refresh; answers; activate X; answers; wait 0 | A 20% verified; B — uncontrolled; active X;
            | message Applied X.; selected X; stored none X; tab presets; > inspect A B; > set A 0.2
        answering B; wait 2000; answers; wait 1000 | B 30% verified; > again B; > set B 0.3)"},
    {"it holds while its own writes are under way, and is compared when they have ended", R"(
        activate X; set B 0.6 | A 20% applying; B 60.0% applying; active X; message Applied X.; selected X;
            | stored none X; tab presets; > set A 0.2
        answers; wait 90; answers; wait 0 | A 20% verified; B 60.0% verified; active none; message outside;
            | > set B 0.6)"},
    {"it ends at the first level that is no longer its own", R"(
        activate X; answers; wait 0; monitor; window on; round 4
        hand B 0.30005; hand A 0.205; round 4 | > read B *3; > read A; > read B
        hand B 0.3002; round | active none; message outside; > read B
        hand B 0.3; hand A 0.2; round 4; activate X; answers; wait 0
        hand A 0.199; round 4 | A 20% read; B 30.0% read; active none; message outside; > read B *2; > read A;
            | > read B *2)"},
    {"it ends with the error of its own failed write, which stays", R"(
        monitor; writes A differ; activate X; answers; wait 0 | A 20% differ!; B 30.0% verified; active X;
            | message Name of A: The display reported a different brightness. Another app or a monitor preset may be
            | overriding it.; selected X; stored none X; tab presets; > set A 0.2; > set B 0.3
        round | A 50% differ!; B 30.0% read; active none; > read A; > read B)"},
    {"brightness that is unknown is no difference", R"(
        activate X; answers; wait 0; unreadable B; refresh; answers | A 20% found; B — found; active X;
            | message Applied X.; selected X; stored none X; tab presets; > set A 0.2; > set B 0.3;
            | > inspect A B)"},
    {"one whose application is cancelled stays active only if the displays match it", R"(
        open; preset V Q 0.2; set A 0.4; select X; select A | A 40% applying; V Q 20% F18; selected A;
            | stored A none; tab displays
        select V; select A |
        activate Y; wait 90; answer; wait 0; answers; wait 0; set B 0.3; activate Y; select A | A 70% verified;
            | B 30.0% applying; active Y; > set A 0.4; > set A 0.7)"},
};

constexpr Scenario editing[] = {
    {"live edits outside of a session are ignored", R"(
        edit X A 0.5 |
        open; select X; answers; wait 0; edit Y A 0.5; edit X A nan; set B 0.3; select X again; edit X A 0.5 |
            | A 20% verified; B 30.0% applying; active X; preparing yes; selected X; session A 20% B 30% F16;
            | stored B X; tab presets; > set A 0.2; > set B 0.3)"},
    {"a failed write's error stays until the next write", R"(
        open; select X; answers; wait 0; writes A differ; edit X A 0.4; wait 90; answers; wait 0
        writes A succeed; edit X A 0.6; wait 90; answers; wait 0 | A 60% verified; X A 60% B 30% F16;
            | message -; > set A 0.6)"},
    {"reverting restores preset and screen, and can be repeated", R"(
        revert | not reverted
        open; select X; answers; wait 0; edit X A 0.8; wait 90; answers; wait 0
        revert; answers; wait 0 | A 20% verified; X A 20% B 30% F16; message reverted; > set A 0.2; > set B 0.3;
            | reverted
        edit X B 0.9; wait 90; answers; set B 0.1; wait 90; answers; wait 0 | B 10.0% verified;
            | X A 20% B 90% F16; active none; message outside; > set B 0.9; > set B 0.1
        activate Y; activate X; revert; answers; wait 0 | B 90.0% verified; active X; message reverted;
            | session A 20% B 90% F16; > set A 0.7; > set A 0.2; > set B 0.9; reverted
        delete X; revert | active none; selected none; session none; stored B none; not reverted)"},
    {"losing the focus ends a recording, and reverting still restores what was selected", R"(
        open; select X; answers; wait 0; edit X A 0.3; record X; wait 90; answers; wait 0
        unfocus | recording none; recording changed
        revert; answers; wait 0 | A 20% verified; X A 20% B 30% F16; message reverted; > set A 0.2; > set B 0.3;
            | reverted)"},
    {"adding takes the readable levels when writes have ended, and opens the preset", R"(
        open; set A 0.4; record X; add | A 40% applying; preparing yes; selected B; stored B none; tab displays;
            | recording changed; recording changed
        wait 90; answers; wait 0 | A 40% verified; Preset 1 A 40% B 50% F18; active Preset 1; preparing no;
            | selected Preset 1; session A 40% B 50% F18; stored B Preset 1; tab presets; > set A 0.4)"},
    {"nothing is added without readable displays, without the window or after something else", R"(
        open; set A 0.4; add; close; wait 90; answers; wait 0 | A 40% verified; selected B; stored B none;
            | tab displays; > set A 0.4
        add |
        open; set A 0.3; add; select A again; wait 90; answers; wait 0 | A 30% verified; selected A;
            | stored A none; > set A 0.3
        unreadable A; unreadable B; refresh; answers; add | A — found; B — found;
            | message No readable display brightness values are available.; refresh done at 180; > inspect A B
        refresh; answers | > inspect A B)"},
    {"deleting leaves nothing of a preset that is about to be applied", R"(
        open; set A 0.4; select X; record X; delete X | A 40% applying; stored B none; tab presets;
            | recording changed; recording changed
        wait 90; answers; wait 0 | A 40% verified; > set A 0.4
        activate Y; answers; wait 0; delete Z; preset W; delete W | A 70% verified; active Y;
            | message Applied Y.; selected Y; session A 70% F17; stored B Y; > set A 0.7)"},
};

constexpr Scenario window[] = {
    {"it opens on the display asked for, else the last one, else the main one, else the first", R"(
        open Q | selected B; stored B none; tab displays
        close; open A | selected A; stored A none
        close; open display-2 | selected B; stored B none
        close; open display-1 | selected A; stored A none
        close; restart; open |
        main Q; refresh; answers; select B; close | selected B; stored B none; > inspect A B
        open Q | selected A; stored A none)"},
    {"a display is shown as soon as there is one, and replaced when it is gone", R"(
        unplug A; unplug B; refresh; answers; open A | tab displays; > inspect
        plug A; plug B; refresh; answers | A 50% found; B 50% found; list AB; selected A; stored A none;
            | > inspect A B
        unplug A; refresh; answers | list B; selected B; stored B none; > inspect B
        unplug B; refresh; answers | selected none; > inspect
        close; plug A; refresh; answers | A 50% found; list A; > inspect A)"},
    {"activating the open preset keeps its session, and another starts its own", R"(
        open; select X; answers; wait 0; edit X A 0.9; activate X | A 90% applying; B 30.0% verified;
            | X A 90% B 30% F16; active X; preparing yes; selected X; session A 20% B 30% F16; stored B X;
            | tab presets; > set A 0.2; > set B 0.3
        activate Y | active Y; selected Y; session A 70% F17; stored B Y)"},
    {"selecting applies a preset only while the window is visible", R"(
        select X | selected X; stored none X; tab presets
        open | selected B; stored B none; tab displays
        select X | A 20% applying; B 30.0% applying; active X; selected X; session A 20% B 30% F16; stored B X;
            | tab presets; > set A 0.2
        answers; wait 0; select X | A 20% verified; B 30.0% verified; > set B 0.3
        select X again | A 20% applying; B 30.0% applying; > set A 0.2
        select Z | selected gone; session none; stored B gone
        select A | selected A; stored A none; tab displays)"},
    {"selecting, activating and adding end a recording", R"(
        open; record X; select A again | selected A; stored A none; tab displays; recording changed;
            | recording changed
        record X; activate Y | A 70% applying; active Y; message Applied Y.; selected Y; session A 70% F17;
            | stored A Y; tab presets; > set A 0.7; recording changed; recording changed
        record X; add | message -; preparing yes; session none; recording changed; recording changed)"},
    {"tabs show a display and the active preset", R"(
        open; select X; answers; wait 0; tab displays | A 20% verified; B 30.0% verified; active X; selected B;
            | stored B none; tab displays; > set A 0.2; > set B 0.3
        record X; tab displays | recording X; recording changed
        tab general | recording none; tab general; recording changed
        tab presets | A 20% applying; B 30.0% applying; selected X; session A 20% B 30% F16; stored B X;
            | tab presets; > set A 0.2
        answers; set A 0.9; wait 90; answers; wait 0; tab displays; tab presets | A 90% verified;
            | B 30.0% verified; active none; selected none; session none; stored B none; > set B 0.3;
            | > set A 0.9)"},
    {"the first usable free shortcut is recorded", R"(
        key 40 | not consumed
        record Z |
        record X; record Y | recording Y; recording changed; recording changed
        key 56 shift; key 106 | Y A 70% F17 refused; consumed; consumed
        key 53 shift | Y A 70% ⇧⎋; recording none; recording changed; consumed
        record X; key 53; key 53 | recording changed; recording changed; consumed; not consumed)"},
    {"closing ends recording, operation and session", R"(
        open; set A 0.4; select X; record X; close | A 40% applying; selected X; stored B X; tab presets;
            | recording changed; recording changed
        wait 90; answers; wait 0; revert | A 40% verified; > set A 0.4; not reverted)"},
    {"after a start the preset selected last is active again if the first levels known are its own", R"(
        activate X; answers; wait 0; restart | A 20% verified; B 30.0% verified; active X; stored none X;
            | > set A 0.2; > set B 0.3
        unreadable A; unreadable B; refresh; answers; restart | A — found; B — found; active none; > inspect A B
        readable A; readable B; refresh; answers | A 20% found; B 30.0% found; active X; > inspect A B
        unreadable A; unreadable B; refresh; answers; restart; add; readable A; readable B; refresh; answers |
            | active none; > inspect A B *2
        hand A 0.9; refresh; answers; restart; hand A 0.2; refresh; answers | > inspect A B *2
        stored rubbish; restart | stored none none)"},
};

void playAll(std::span<const Scenario> scenarios)
{
    for (const Scenario& each : scenarios)
        play(start, each, &EditorScript::destroyEditor);
}

TEST(PresetEditor, AppliesPresetsAndKnowsWhichOneIsActive) { playAll(applying); }
TEST(PresetEditor, EditsPresets) { playAll(editing); }
TEST(PresetEditor, KeepsWhatTheSettingsWindowShows) { playAll(window); }

TEST_F(EditorScript, WhoHearsOfANewPresetMayOpenSomethingElse)
{
    run("plug A; refresh; answers; preset X A 0.1; open");
    presets.shortcutsChanged = [this] { perform("select X"); };
    run("add; answers; wait 0");
    EXPECT_EQ(presets.presets->size(), 2u);
    EXPECT_EQ(*editor->activePresetID, id("X"));
}

} // namespace
} // namespace lumenvale
