// SPDX-License-Identifier: MIT
// Random users, hands on monitors, cables and sleep; what must hold after every step and when all has settled.
#include "support/RandomSteps.h"

#include <cmath>
#include <set>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

/// What the test knows of the last request for a display.
struct Request {
    double level = 0.0;
    bool isUsers = true;       ///< not a preset's: a refresh drops it
    bool mayBeDropped = false; ///< a refresh came after it
};

constexpr char calls[] = "set %d %l; set %d %l; set %d %l; set %d %l; apply %d %l %d %l %d %l; wait %t; wait %t;"
                         "wait %t; wait %t; move %n %n; await; await";
constexpr char accidents[] = "refresh; refresh 300; cable %d; cable %d; hand %d %l; hand %d %l; writes %d differ;"
                             "writes %d unread; writes %d refused; writes %d succeed; writes %d succeed;"
                             "unreadable %d; readable %d; dark %d; lit %d; window on; window off;"
                             "system screensSleep; system screensWake; system sleep; system wake";

class StoreWorld : public StoreScript {
public:
    explicit StoreWorld(unsigned seed) : random(seed, "ABCDE"), inOrder(seed % 2 == 0), usesBatches(seed % 3 != 0)
    {
        run("plug A native; plug B 255; plug C; plug D; plug E none; refresh; answers; monitor");
        subscription = store->displays.subscribe([this](const auto&) { ++published; });
        store->brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
            for (const DisplayInfo& each : changed)
                EXPECT_EQ(shown(each.id), each);
        };
    }

    void step()
    {
        const unsigned choice = random.pick(9);
        if (choice < 3)
            return answerOne();
        const std::string step = random.next(choice < 7 ? calls : accidents);
        if (step.starts_with("apply") && !usesBatches)
            return;
        SCOPED_TRACE(step);
        note(wordsOf(step));
        perform(step);
    }

    void checkAlways()
    {
        const auto order = savedOrder();
        EXPECT_EQ(std::set(order.begin(), order.end()).size(), order.size()) << "an identifier is repeated";
        for (const std::string& known : everSaved)
            EXPECT_NE(std::ranges::find(order, known), order.end()) << known << " is lost";
        everSaved.insert(order.begin(), order.end());
        auto remaining = order.begin();
        for (const std::string& id : shownIDs()) {
            remaining = std::find(remaining, order.end(), id);
            EXPECT_NE(remaining, order.end()) << id << " is out of order";
        }
        for (const char* each : {"set A", "set B", "set C", "set D", "set E"})
            EXPECT_LE(hardware.liveCalls(each), usesBatches ? 2u : 1u);
        EXPECT_LE(hardware.liveCalls("inspect"), 1u);
        EXPECT_LE(hardware.liveCalls("read"), 1u);
    }

    /// Lets everything come to an end and compares the store with the world.
    void settle()
    {
        perform("calm");
        for (int round = 0; round < 60; ++round) { // 6 s: longer than every delay, with DDC rounds at the end
            clock.advance(100ms);
            while (hardware.waitingCount() > 0)
                answerOne();
        }
        EXPECT_FALSE(store->isRefreshing.get());
        EXPECT_EQ(std::exchange(reports, {}).size(), waits.size()) << "a wait does not end";
        waits.clear();
        for (const auto& [id, last] : requests) {
            const bool isWritten = std::abs(lastSet(id) - last.level) < 1e-5;
            EXPECT_TRUE(isWritten || last.mayBeDropped) << id << " " << last.level << " " << lastSet(id);
        }
        requests.clear();
        for (const DisplayInfo& each : store->displays.get()) {
            EXPECT_NE(each.status, "Applying brightness…") << each.id;
            if (each.method != ControlMethod::unavailable && hardware.monitors.contains(each.id)) {
                EXPECT_EQ(each.brightness, hardware.monitors[each.id].brightness) << each.id;
            }
        }
    }

private:
    void note(const Words& words)
    {
        const bool isUsers = words[0] == "set";
        for (const auto& [id, value] : levels(words, isUsers || words[0] == "apply" ? 1 : words.size())) {
            const DisplayInfo* display = store->display(id);
            if (display && display->method != ControlMethod::unavailable && hardware.monitors.contains(id) &&
                (display->brightness || !isUsers)) // else no request, or one that the refresh to come drops
                requests[id] = {quantise(*display, value), isUsers};
        }
        if (words[0] == "cable")
            requests.erase(words[1]);
        if (words[0] != "cable" && words[0] != "refresh" && words != Words{"system", "wake"})
            return;
        staleBefore = hardware.log.size();
        for (auto& [id, last] : requests)
            last.mayBeDropped = last.mayBeDropped || last.isUsers;
    }
    void answerOne()
    {
        if (hardware.waitingCount() == 0)
            return;
        const unsigned position = inOrder ? 0 : random.pick(hardware.waitingCount());
        const bool isStale = hardware.numberOf(position) < staleBefore;
        const int before = published;
        hardware.answer(position);
        EXPECT_TRUE(!isStale || published == before) << "the answer to a question from before a refresh was shown";
    }
    /// The value of the last call that asked to write to this display, or -1.
    double lastSet(const std::string& id) const
    {
        const std::string beginning = "set " + id + " ";
        const auto call = std::find_if(hardware.log.rbegin(), hardware.log.rend(),
                                       [&](const std::string& each) { return each.starts_with(beginning); });
        return call == hardware.log.rend() ? -1.0 : std::stod(call->substr(beginning.size()));
    }

    RandomSteps random;
    const bool inOrder;
    const bool usesBatches;
    std::map<std::string, Request> requests;
    std::set<std::string> everSaved;
    std::size_t staleBefore = 0; ///< calls with smaller numbers are older than the last refresh
    int published = 0;
    Subscription subscription;
};

TEST(DisplayStoreProperties, HoldForRandomUsersMonitorsAndCables)
{
    for (unsigned seed = 1; seed <= 60 && !testing::Test::HasFailure(); ++seed) {
        StoreWorld world(seed);
        for (int step = 0; step < 300 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            world.step();
            world.checkAlways();
            if (step % 60 == 59)
                world.settle();
        }
    }
}

} // namespace
} // namespace lumenvale
