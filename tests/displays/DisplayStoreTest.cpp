// SPDX-License-Identifier: MIT
#include "support/StoreScript.h"

#include <span>

namespace lumenvale {
namespace {

// Display A and C have 100 units, B is native.
constexpr char start[] = "plug A; plug B native; plug C; refresh; answers\n";

constexpr Scenario requests[] = {
    {"requests within 90 ms make one write, of the last", R"(
        set A 0.05; wait 60; set A 0.1; wait 29 | A 10% applying
        wait 1                                  | > set A 0.1
        answer; wait 1000                       | A 10% verified)"},
    {"requests during a write make one more, and the slider does not jump back", R"(
        set A 0.2; wait 90; set A 0.3; set A 0.4 | A 40% applying; > set A 0.2
        answer; wait 89                          |
        wait 1                                   | > set A 0.4
        answer; wait 1000                        | A 40% verified)"},
    {"displays are written independently and in their own units", R"(
        set A 0.426; wait 50; set B 0.4261; wait 90 | A 43% applying; B 42.6% applying; > set A 0.43; > set B 0.4261
        answer 1                                    | B 42.6% verified
        answer                                      | A 43% verified)"},
    {"the verified value replaces the requested one", R"(
        highest A 0.8; set A 0.9; wait 90; answer | A 80% verified; > set A 0.9)"},
    {"what cannot be written is ignored", R"(
        plug D none; plug E; unreadable E; refresh; answers
        set A nan; force A inf; set Z 0.5; force D 0.5; set E 0.5; apply D 0.5 Z 0.5 A nan; wait 1000 |
        force E 0.7; wait 90 | E 70% applying; > set E 0.7)"},
    {"a failure is explained until a write succeeds", R"(
        writes A differ; set A 0.9; wait 90; answer | A 90% differ!; > set A 0.9
        writes A succeed; set A 0.8; wait 90        | A 80% applying!differ; > set A 0.8
        answer                                      | A 80% verified)"},
    {"a refresh drops what waits and hides the write in flight", R"(
        set A 0.9; set B 0.1; wait 90; set A 0.8 | A 80% applying; B 10.0% applying; > set A 0.9; > set B 0.1
        refresh; answer                          | refresh under way; > inspect A B C
        answers; wait 1000                       | A 90% found; B 50.0% found; refresh done at 90)"},
    {"a request during a refresh stays on show and is written in the new units", R"(
        refresh; set A 0.9; set B 0.6; wait 90; set A 0.126; maximum A 10
        answer           | A 10% applying; refresh done at 90
        answers          | B 60.0% verified
        wait 90; answers | A 10% verified; > set A 0.1)"},
    {"a request for a display that a refresh does not find is dropped", R"(
        refresh; set A 0.9; set B 0.9; unplug A; plug A none; unplug B; refresh; set A 0.8; set B 0.8
        answers; wait 1000 | A — uncontrolled; list AC; refresh done at 0)"},
};

constexpr Scenario batches[] = {
    {"displays are shown at once and written one after another in display order", R"(
        writes B unread; move 2 0                 | list CAB; order CAB
        apply A 0.101 B 0.2 C 0.3 Z 0.4 | A 10% applying; B 20.0% applying; C 30% applying; > set C 0.3
        answer                          | C 30% verified; > set A 0.1
        answers; wait 1000              | A 10% verified; B 20.0% unread!; > set B 0.2)"},
    {"the user's own request replaces the level of that display", R"(
        apply A 0.1 B 0.2 C 0.3; set B 0.9; set A 0.8; wait 90
        answer  | > set C 0.3
        answers | A 80% verified; B 90.0% verified; C 30% verified)"},
    {"a level replaces what the user requests and survives a refresh", R"(
        set A 0.9; wait 90; set A 0.8; apply B 0.2 A 0.1 | A 10% applying; B 20.0% applying; > set A 0.9; > set A 0.1
        answer; wait 90                                  |
        refresh 1000; answers                            | B 20.0% verified; refresh under way; > set B 0.2
        wait 1000; answers | A 10% found; B 20.0% found; refresh done at 1180; > inspect A B C)"},
    {"a second one replaces the levels that it names and keeps the others", R"(
        apply A 0.1 C 0.3; apply B 0.2 C 0.4
        answers | A 10% verified; B 20.0% verified; C 40% verified; > set B 0.2; > set C 0.4)"},
    {"it goes on through a refresh, which shows the levels still to come", R"(
        apply A 0.1 B 0.2 C 0.3; refresh; unplug C; refresh
        answer 0 | > set B 0.2
        answer 0 | A 10% found; list AB; refresh done at 0
        answers  | B 20.0% verified)"},
    {"it writes in the units that a refresh finds", R"(
        apply A 0.1 C 0.26; maximum C 10; refresh; answer 1
        answer | > set C 0.3)"},
    {"an outcome is not hidden by a request that a refresh dropped", R"(
        set A 0.9; refresh 10000; apply A 0.1
        answer | A 10% verified)"},
};

constexpr Scenario waits[] = {
    {"who waits goes on from the main loop when the last write has ended", R"(
        await                                                | finished
        set A 0.9; apply B 0.2 C 0.3; await; await; answers; wait 90
        answer                                               | A 90% verified
        set A 0.6; wait 0                                    | A 60% applying
        wait 90; answer; wait 0                              | A 60% verified; > set A 0.6; finished; finished)"},
    {"a refresh that drops the requests ends the wait, but a batch goes on", R"(
        set A 0.9; await; refresh; wait 0 | A 90% applying; refresh under way; > inspect A B C; finished
        answers; apply A 0.1; await; refresh; wait 0 | A 10% applying; > set A 0.1; > inspect A B C
        answer; wait 0                               | finished
        apply A 0.1; await; answers; refresh 1000
        wait 0                                       | finished)"},
    {"after a start it lasts until the displays are known", R"(
        restart; refresh; await | refresh under way; > inspect A B C
        answers | A 50% found; B 50.0% found; C 50% found; list ABC; order ABC; refresh done at 0
        wait 0  | finished)"},
};

constexpr Scenario refreshes[] = {
    {"displays come in the saved order, new ones last", R"(
        restart B X A B; plug N
        refresh | refresh under way; > inspect A B C N
        answer  | A 50% found; B 50.0% found; C 50% found; N 50% found; list BACN; order BXACN; refresh done at 0)"},
    {"screen changes are followed after 700 ms and a wake after 1500", R"(
        system screensSleep; system screensWake; system sleep            |
        system screens; wait 699; system screens; wait 699 | refresh under way
        wait 1                                            | > inspect A B C
        answers; system wake; wait 1499                   |
        wait 1; answers                                   | refresh done at 2899; > inspect A B C)"},
    {"a move is saved at once, keeps the places of absent displays and holds against a refresh", R"(
        plug X; refresh; answers; move 3 1; unplug X; refresh; answers
        refresh; move 2 0 | list CAB; order CXAB; refresh under way; > inspect A B C
        answers           | refresh done at 0)"},
};

constexpr Scenario late[] = {
    {"a display that cannot be controlled is asked again by itself after 2, 5, 10 and 30 s", R"(
        plug D none; refresh; answers; wait 1999 | D — uncontrolled; list ABCD; order ABCD; > inspect A B C D
        wait 1; answers; wait 2999               | > again D
        wait 1; set A 0.4; answering D; answers; wait 90; answers | A 40% verified; D 50% found; > again D; > set A 0.4
        wait 60000                               |)"},
    {"not while the user's requests are written, nor in the dark, nor after the last time", R"(
        plug D none; refresh; answers; wait 1950; set A 0.3; wait 500; answer; wait 40; answers
        wait 210; answers         | > again D
        dark D; wait 3000; lit D; system screensSleep; wait 10000 |
        wait 30000                |
        system screensWake; answering D; wait 2000; answers | D 50% found; > again D)"},
    {"a level of a preset is written to a display that can be controlled within a minute, and later no more", R"(
        plug D none; refresh; answers; apply D 0.7; apply D 0.8 | D — uncontrolled; list ABCD; order ABCD; > inspect A B C D
        answering D; wait 2000; answers | D 80% verified; > again D; > set D 0.8
        unplug D; plug D none; refresh; answers | D — uncontrolled; refresh done at 2000; > inspect A B C D
        apply D 0.7; answering D; refresh; answers | D 70% verified; > inspect A B C D; > set D 0.7
        unplug D; plug D none; refresh; answers | D — uncontrolled; > inspect A B C D
        apply D 0.9; system screensSleep; wait 60001; answering D; refresh; answers | D 50% found; refresh done at 62001; > inspect A B C D)"},
};

constexpr Scenario monitoring[] = {
    {"what was changed elsewhere is shown and reported once", R"(
        monitor; round          | B 50.0% read; > read B
        round                   | > read B
        hand B 0.25; round 2    | B 25.0% read; > read B *2; seen B 25.0%
        stop; hand B 0.3; round |)"},
    {"DDC displays are read every 40th round, every 4th while a window shows, and never while dark", R"(
        monitor; round 39    | B 50.0% read; > read B *39
        hand A 0.7; round 40 | A 70% read; C 50% read; > read A; > read B; > read C; > read B *39; seen A 70%
        window on; round     | > read A; > read B; > read C
        round 4              | > read B *3; > read A; > read B; > read C
        dark A; round 4      | > read B *4; > read C)"},
    {"what is no brightness is ignored", R"(
        monitor; hand B -0.01; round; hand B 1.01; round; hand B nan; round; unreadable B; round | > read B *4)"},
    {"nothing is read while asleep, refreshing or writing", R"(
        monitor; system screensSleep; round; system screensWake; system sleep; round |
        system wake; wait 3000          | refresh under way; > inspect A B C
        answers; set A 0.9; wait 1500   | A 90% applying; refresh done at 4500; > set A 0.9
        answers; apply A 0.2; wait 1500 | A 20% applying; > set A 0.2
        answers; round                  | A 20% verified; B 50.0% read; > read B)"},
    {"it stops asking the other displays when a request comes", R"(
        plug D native; refresh; answers; monitor; wait 750; set D 0.9
        answers |)"},
    {"after a failed write a display is read next, with the error left on show for 5 s", R"(
        monitor; window on; round 3; writes A refused; writes B differ; set A 0.9; set B 0.9; wait 90; answers
        dark A; round | B 50.0% differ!; C 50% read; > read B; > read C; seen B 50.0%
        lit A; round  | A 50% refused!; > read A; > read B; seen A 50%
        round 4       | > read B *2; > read A; > read B; > read C; > read B
        round         | B 50.0% read; > read B
        round 2       | A 50% read; > read B; > read A; > read B; > read C)"},
    {"a failure that was overcome makes no reading out of turn", R"(
        monitor; writes A refused; set A 0.9; wait 90; answers; writes A succeed; set A 0.8; wait 90; answers
        round   | B 50.0% read; > read B
        writes A refused; set A 0.9; wait 90; answers; refresh; answers
        round   | B 50.0% read; > read B)"},
    {"an answer that a request has overtaken changes nothing", R"(
        monitor; hand B 0.1; wait 750; set A 0.9; answer | A 90% applying; > read B)"},
    {"an answer that a preset has overtaken changes nothing", R"(
        monitor; hand B 0.1; wait 750; apply A 0.9; answer | A 90% applying; > read B; > set A 0.9)"},
    {"an answer that a refresh has overtaken changes nothing", R"(
        monitor; hand B 0.1; wait 750; refresh 9000; answer | refresh under way; > read B)"},
    {"an answer that sleep has overtaken changes nothing", R"(
        monitor; hand B 0.1; wait 750; system sleep; answer | > read B)"},
};

void playAll(std::span<const Scenario> scenarios)
{
    for (const Scenario& each : scenarios)
        play(start, each, &StoreScript::destroyStore);
}

TEST(DisplayStore, CarriesRequests) { playAll(requests); }
TEST(DisplayStore, WritesPresets) { playAll(batches); }
TEST(DisplayStore, TellsWhenWritesHaveEnded) { playAll(waits); }
TEST(DisplayStore, Refreshes) { playAll(refreshes); }
TEST(DisplayStore, AsksLateDisplaysAgain) { playAll(late); }
TEST(DisplayStore, MonitorsBrightness) { playAll(monitoring); }

TEST_F(StoreScript, AReadingThatChangesNothingIsNotPublished)
{
    run("plug A native; refresh; answers; monitor; round");
    int published = 0;
    const Subscription subscription = store->displays.subscribe([&](const auto&) { ++published; });
    run("round");
    EXPECT_EQ(published, 0);
}

TEST_F(StoreScript, EveryOperationMayBeCalledFromTheMonitoringReport)
{
    run("plug A native; plug B; refresh; answers; monitor");
    store->brightnessObserved = [this](const auto&) {
        run("set A 0.3; apply B 0.4; move 1 0; refresh 50; monitor");
        reports.push_back("reported");
    };
    run("hand A 0.1; wait 750; answers; wait 50; answers");
    EXPECT_EQ(shown("A").brightness, 0.1) << "the refresh dropped the request";
    EXPECT_EQ(shown("B").brightness, 0.4) << "the batch goes on";
    EXPECT_EQ(shownIDs(), (std::vector<std::string>{"B", "A"}));
    EXPECT_EQ(clock.pendingCount(), 1u) << "one monitoring loop";
}

TEST_F(StoreScript, AnObserverMayWaitForWritesAndAskForTheNextRefreshWhileOneIsPublished)
{
    run("plug A; plug B none");
    screens.list.emplace_back(); // a screen without a display number
    const Subscription subscription = store->displays.subscribe([&](const auto& list) {
        if (!store->lastRefresh.get() && shownIDs().empty())
            perform("refresh 100");
        else if (list[0].status != "Inspected.")
            perform("await");
    });
    run(R"(
        refresh; answers   | A 50% found; B — uncontrolled; list AB; order AB; refresh under way; > inspect A B
        wait 100; answers  | refresh done at 100; > inspect A B
        apply A 0.3        | A 30% applying; > set A 0.3
        answers; wait 0    | A 30% verified; finished; finished)");
}

} // namespace
} // namespace lumenvale
