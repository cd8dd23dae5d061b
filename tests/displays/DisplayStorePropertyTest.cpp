// SPDX-License-Identifier: MIT
// Random users, hands on monitors, cables and sleep; what must hold after every step and when all has settled.
#include "support/RandomWorld.h"

#include <algorithm>
#include <set>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;

/// What the test knows of the last request for a display.
struct Request {
    double level = 0.0;
    bool mayBeDropped = false; ///< a refresh came after it, and it did not come from a batch
};

class StoreWorld : public RandomWorld {
public:
    explicit StoreWorld(unsigned seed)
        : RandomWorld(seed, {"A", "B", "C", "D", "E"}), inOrder(seed % 2 == 0), usesBatches(seed % 3 != 0)
    {
        subscription = store->displays.subscribe([this](const auto&) { ++published; });
        store->brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
            for (const DisplayInfo& each : changed)
                EXPECT_EQ(shown(each.id), each);
        };
        store->startMonitoring();
        refresh();
    }

    void step()
    {
        const unsigned choice = pick(16);
        if (choice < 3)
            request(name(), level());
        else if (choice < 4)
            usesBatches ? applyLevels() : request(name(), level());
        else if (choice < 7)
            clock.advance(std::chrono::milliseconds(pick(200)));
        else if (choice < 11)
            answerOne();
        else if (choice < 12)
            changeByHand(name());
        else if (choice < 13)
            replug(name());
        else if (choice < 14)
            pick(3) == 0 ? requestRefresh(pick(2) * 300) : store->moveDisplays({pick(6), pick(6)}, pick(7));
        else if (choice < 15)
            sleep();
        else
            waits.emplace_back(countWhenFinished()).start();
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
        for (const std::string& each : names)
            EXPECT_LE(hardware.liveCalls("set " + each + " "), usesBatches ? 2u : 1u);
        EXPECT_LE(hardware.liveCalls("inspect"), 1u);
        EXPECT_LE(hardware.liveCalls("read"), 1u);
    }

    /// Lets everything come to an end and compares the store with the world.
    void settle()
    {
        wakeEverything();
        for (int round = 0; round < 60; ++round) { // 6 s: longer than every delay, with DDC rounds at the end
            while (!hardware.waiting().empty())
                answerOne();
            clock.advance(100ms);
        }
        while (!hardware.waiting().empty())
            answerOne();
        EXPECT_FALSE(store->isRefreshing.get());
        EXPECT_EQ(waitsEnded, waitsBegun) << "somebody waits for ever";
        for (const auto& [id, last] : requests) {
            const bool isWritten = std::abs(lastSet(id) - last.level) < 1e-5;
            EXPECT_TRUE(isWritten || last.mayBeDropped) << id << " " << last.level << " " << lastSet(id);
        }
        requests.clear();
        requestedByUser.clear();
        for (const DisplayInfo& each : store->displays.get()) {
            EXPECT_NE(each.status, "Applying brightness…") << each.id;
            if (each.method != ControlMethod::unavailable && hardware.monitors.contains(each.id)) {
                EXPECT_EQ(each.brightness, hardware.monitors[each.id].brightness) << each.id;
            }
        }
    }

private:
    void note(const std::string& id, double value, bool byBatch)
    {
        const DisplayInfo* display = store->display(id);
        if (!display || display->method == ControlMethod::unavailable || !hardware.monitors.contains(id))
            return; // no request, or one that the refresh to come drops
        if (byBatch)
            requestedByUser.erase(id);
        else
            requestedByUser.insert(id);
        requests[id] = {quantise(*display, value), false};
    }
    void request(const std::string& id, double value)
    {
        note(id, value, false);
        store->setBrightness(id, value);
        if (store->display(id) && requests.contains(id)) {
            EXPECT_EQ(shown(id).brightness, requests[id].level) << "the interface follows the finger";
        }
    }
    void applyLevels()
    {
        std::map<std::string, double> levels;
        for (const std::string& each : names) {
            if (pick(3) != 0)
                levels[each] = level();
        }
        for (const auto& [id, value] : levels)
            note(id, value, true);
        store->apply(levels);
    }
    void noteRefresh()
    {
        staleBefore = hardware.log.size();
        for (auto& [id, last] : requests)
            last.mayBeDropped = last.mayBeDropped || requestedByUser.contains(id);
    }
    void requestRefresh(unsigned delay)
    {
        noteRefresh();
        store->requestRefresh(std::chrono::milliseconds(delay));
    }
    void answerOne()
    {
        const auto count = static_cast<unsigned>(hardware.waiting().size());
        if (count == 0)
            return;
        const unsigned position = inOrder ? 0 : pick(count);
        const bool isStale = hardware.numberOf(position) < staleBefore;
        const int before = published;
        hardware.answer(position);
        if (isStale) {
            EXPECT_EQ(published, before) << "an answer to a question from before a refresh was shown";
        }
    }
    void replug(const std::string& id)
    {
        if (pick(3) != 0)
            return;
        requests.erase(id);
        noteRefresh();
        changeCables(id);
    }
    void sleep()
    {
        const SystemEvent event = sleepOrWake();
        if (event == SystemEvent::systemDidWake)
            noteRefresh();
        events.send(event);
        store->setWindowVisible(pick(2) == 0);
        if (!screens.asleep.erase(pick(6)))
            screens.asleep.insert(pick(6));
    }
    Task<> countWhenFinished()
    {
        ++waitsBegun;
        co_await store->pendingWritesFinished();
        EXPECT_EQ(hardware.liveCalls("set"), 0u);
        ++waitsEnded;
    }
    /// The value of the last call that asked to write to this display, or -1.
    double lastSet(const std::string& id) const
    {
        const std::string beginning = "set " + id + " ";
        for (auto call = hardware.log.rbegin(); call != hardware.log.rend(); ++call) {
            if (call->starts_with(beginning))
                return std::stod(call->substr(beginning.size()));
        }
        return -1.0;
    }

    const bool inOrder;
    const bool usesBatches;
    std::map<std::string, Request> requests;
    std::set<std::string> requestedByUser;
    std::set<std::string> everSaved;
    std::size_t staleBefore = 0; ///< calls with smaller numbers are older than the last refresh
    int published = 0;
    int waitsBegun = 0;
    int waitsEnded = 0;
    Subscription subscription;
    std::vector<Task<>> waits;
};

TEST(DisplayStoreProperties, HoldForRandomUsersMonitorsAndCables)
{
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        StoreWorld world(seed);
        for (int step = 0; step < 300 && !testing::Test::HasFailure(); ++step) {
            SCOPED_TRACE("step " + std::to_string(step));
            world.step();
            world.checkAlways();
            if (step % 60 == 59)
                world.settle();
        }
        if (testing::Test::HasFailure())
            return;
    }
}

} // namespace
} // namespace lumenvale
