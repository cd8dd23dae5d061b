// SPDX-License-Identifier: MIT
// A display store in a small language. "set A 0.3; wait 90 | A 30% applying; > set A 0.3" performs two steps and
// then compares all that has become different since the line before: the state that is shown, what was asked of
// the hardware (">") and what was reported. Rows of such lines are scenarios.
#pragma once

#include "support/StoreFixture.h"

#include <algorithm>
#include <iterator>
#include <sstream>

namespace lumenvale {

struct Scenario {
    const char* name;
    const char* script;
};

class StoreScript : public StoreFixture {
public:
    using Words = std::vector<std::string>;

    StoreScript() { startStore(); }
    void TestBody() override {}

    static Words wordsOf(const std::string& step)
    {
        std::istringstream text(step);
        return Words(std::istream_iterator<std::string>(text), {});
    }
    static Words stepsOf(const std::string& script)
    {
        Words steps;
        std::istringstream text(script);
        for (std::string step; std::getline(text >> std::ws, step, ';');)
            steps.push_back(step);
        return steps;
    }
    /// Performs one step; an unknown one ends the test.
    void perform(const std::string& step)
    {
        const Words words = wordsOf(step);
        verbs.at(words.at(0))(words);
        turn();
    }

    /// Ends the store, and with it whatever waits for it.
    void destroyStore()
    {
        waits.clear();
        store.reset();
        EXPECT_EQ(clock.pendingCount(), 0u);
    }

    /// What has become different since the last call: entries of `state`, calls to the hardware, reports.
    std::string happenings()
    {
        std::string text;
        const auto add = [&text](const std::string& each) { text += (text.empty() ? "" : "; ") + each; };
        std::map<std::string, std::string> now = state();
        for (const auto& [key, value] : now) {
            if (!before.contains(key) || before[key] != value)
                add(key + " " + value);
        }
        before = std::move(now);
        while (told < hardware.log.size()) {
            const std::size_t first = told;
            while (told < hardware.log.size() && hardware.log[told] == hardware.log[first])
                ++told;
            const std::size_t count = told - first;
            add("> " + hardware.log[first] + (count > 1 ? " *" + std::to_string(count) : ""));
        }
        for (const std::string& each : std::exchange(reports, {}))
            add(each);
        return text;
    }

    /// Performs lines of "steps | happenings" and compares. Lines without a bar prepare the world.
    void run(const std::string& script)
    {
        std::istringstream text(script);
        for (std::string line; std::getline(text, line);) {
            const std::size_t bar = line.find('|');
            for (const std::string& step : stepsOf(line.substr(0, bar)))
                perform(step);
            const std::string happened = happenings();
            if (bar != std::string::npos) {
                const std::size_t begin = std::min(line.find_first_not_of(' ', bar + 1), line.size());
                EXPECT_EQ(happened, line.substr(begin)) << line;
            }
        }
    }

protected:
    virtual std::map<std::string, std::string> state() const
    {
        std::map<std::string, std::string> result;
        if (!store)
            return result;
        for (const DisplayInfo& each : store->displays.get()) {
            result["list"] += each.id;
            result[each.id] = percentageText(each) + " " + shortStatus(each);
        }
        for (const std::string& each : savedOrder())
            result["order"] += each;
        const auto last = store->lastRefresh.get();
        const auto sinceStart = last.value_or(start) - start;
        result["refresh"] = store->isRefreshing.get() ? "under way"
                            : last ? "done at " + std::to_string(sinceStart / std::chrono::milliseconds(1))
                                   : "never";
        return result;
    }
    Words savedOrder() const
    {
        Words ids;
        for (const PropertyValue& each :
             readDefault<PropertyArray>(defaults, "displayOrder").value_or(PropertyArray()))
            ids.push_back(*each.as<std::string>());
        return ids;
    }
    /// What happens on a later turn of the main loop.
    virtual void turn() {}

    void startStore()
    {
        store = std::make_unique<DisplayStore>(hardware, defaults, screens, events, clock);
        store->brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
            for (const DisplayInfo& each : changed)
                reports.push_back("seen " + each.id + " " + percentageText(each));
        };
    }
    /// "A 0.3 B 0.4" from this word on.
    static std::map<std::string, double> levels(const Words& words, std::size_t first)
    {
        std::map<std::string, double> result;
        for (std::size_t i = first; i < words.size(); i += 2)
            result[words[i]] = std::stod(words[i + 1]);
        return result;
    }

    std::map<std::string, std::function<void(const Words&)>> verbs = {
        {"set", [this](const Words& w) { store->setBrightness(w[1], std::stod(w[2])); }},
        {"force", [this](const Words& w) { store->setBrightness(w[1], std::stod(w[2]), true); }},
        {"apply", [this](const Words& w) { store->apply(levels(w, 1)); }},
        {"refresh", [this](const Words& w) { store->requestRefresh(milliseconds(w)); }},
        {"move", [this](const Words& w) { store->moveDisplays({std::stoul(w[1])}, std::stoul(w[2])); }},
        {"restart",
         [this](const Words& w) {
             defaults.set("displayOrder", PropertyArray(w.begin() + 1, w.end())), startStore();
         }},
        {"monitor", [this](const Words&) { store->startMonitoring(); }},
        {"stop", [this](const Words&) { store->stopMonitoring(); }},
        {"window", [this](const Words& w) { store->setWindowVisible(w[1] == "on"); }},
        {"await", [this](const Words&) { waits.emplace_back(reportWhenFinished()).start(); }},
        {"wait", [this](const Words& w) { clock.advance(milliseconds(w)); }},
        {"answer", [this](const Words& w) { hardware.answer(w.size() > 1 ? std::stoul(w[1]) : 0); }},
        {"answers", [this](const Words&) { hardware.answerAll(); }},
        {"round", // of monitoring
         [this](const Words& w) {
             for (int count = w.size() > 1 ? std::stoi(w[1]) : 1; count > 0; --count)
                 clock.advance(std::chrono::milliseconds(750)), hardware.answerAll();
         }},
        {"hand", [this](const Words& w) { monitor(w).brightness = std::stod(w[2]); }}, // on the monitor's buttons
        {"highest", [this](const Words& w) { monitor(w).highest = std::stod(w[2]); }},
        {"maximum", [this](const Words& w) { monitor(w).maximum = static_cast<std::uint16_t>(std::stoi(w[2])); }},
        {"unreadable", [this](const Words& w) { monitor(w).isReadable = false; }},
        {"readable", [this](const Words& w) { monitor(w).isReadable = true; }},
        {"writes", [this](const Words& w) { monitor(w).writeError = errors.at(w[2]); }},   // from now on
        {"answering", [this](const Words& w) { monitor(w).method = ControlMethod::ddc; }}, // DDC/CI, from now on
        {"plug", [this](const Words& w) { connect(plugged[w[1]] = w); }},
        {"unplug", [this](const Words& w) { unplug(w[1]); }},
        {"cable", // is pulled or put in again, and the system says so
         [this](const Words& w) {
             hardware.monitors.contains(w[1]) ? unplug(w[1]) : connect(plugged[w[1]]);
             events.send(SystemEvent::screenParametersChanged);
         }},
        {"dark", [this](const Words& w) { screens.asleep.insert(shown(w[1]).displayID); }},
        {"lit", [this](const Words& w) { screens.asleep.erase(shown(w[1]).displayID); }},
        {"calm", // from now on all can be read and is
         [this](const Words&) {
             for (auto& [id, monitor] : hardware.monitors)
                 monitor.isReadable = true;
             screens.asleep.clear();
             events.send(SystemEvent::screensDidWake);
             store->setWindowVisible(true);
         }},
        {"system", // announces
         [this](const Words& w) {
             constexpr std::string_view names[] = {"screensSleep", "screensWake", "sleep", "wake", "screens"};
             events.send(static_cast<SystemEvent>(std::ranges::find(names, w[1]) - std::begin(names)));
         }},
    };
    Words reports;
    std::vector<Task<>> waits;

private:
    /// How writes may end.
    inline static const std::map<std::string, std::optional<BrightnessError>> errors = {
        {"succeed", std::nullopt},
        {"disconnected", BrightnessError::disconnected},
        {"refused", BrightnessError::writeFailed},
        {"unread", BrightnessError::readFailed},
        {"differ", BrightnessError::mismatch}};

    static std::chrono::milliseconds milliseconds(const Words& words)
    {
        return std::chrono::milliseconds(words.size() > 1 ? std::stoi(words[1]) : 0);
    }
    void connect(const Words& words)
    {
        const std::string kind = words.size() > 2 ? words[2] : "100";
        FakeMonitor monitor;
        if (kind == "native" || kind == "none")
            monitor.method = kind == "native" ? ControlMethod::apple : ControlMethod::unavailable;
        else if (kind[0] == 'L') // a native one with so many levels above the lowest
            monitor.method = ControlMethod::apple, monitor.levels = LevelRange{3, 3U + std::stoi(kind.substr(1))};
        else
            monitor.maximum = static_cast<std::uint16_t>(std::stoi(kind));
        plug(words[1], monitor);
    }
    /// The monitor that the step names; while its cable is pulled, one that no display leads to.
    FakeMonitor& monitor(const Words& words)
    {
        const auto found = hardware.monitors.find(words[1]);
        return found == hardware.monitors.end() ? unplugged : found->second;
    }
    Task<> reportWhenFinished()
    {
        co_await store->pendingWritesFinished();
        reports.push_back("finished");
    }
    /// One word for each text that the interface may show; the text itself for any other.
    static std::string shortStatus(const DisplayInfo& display)
    {
        std::map<std::string, std::string> names = {
            {"Applying brightness…", "applying"},
            {"Hardware brightness verified at " + percentageText(display) + ".", "verified"},
            {"Current hardware brightness read successfully.", "read"},
            {"Inspected.", "found"},
            {"No control.", "uncontrolled"}};
        for (const auto& [name, error] : errors)
            names[std::string(error ? description(*error) : "")] = name;
        const std::string status = names.contains(display.status) ? names[display.status] : display.status;
        if (!display.error)
            return status;
        return status + "!" + (display.error == display.status ? "" : names.at(*display.error));
    }

    const Clock::WallTime start = clock.wallTime();
    FakeMonitor unplugged;
    std::map<std::string, Words> plugged;
    std::map<std::string, std::string> before;
    std::size_t told = 0; ///< calls of the hardware's log
};

/// Plays a scenario, and again up to each of its lines: when `destroy` ends the world there, no timer is left and
/// nothing more is asked of the hardware. A line that begins with a bar continues the one before.
template <typename World>
void play(const std::string& start, const Scenario& scenario, void (World::*destroy)())
{
    SCOPED_TRACE(scenario.name);
    std::istringstream lines(start + scenario.script);
    std::string script;
    for (std::string line; std::getline(lines, line);) {
        const std::size_t first = line.find_first_not_of(' ');
        const bool continues = first != std::string::npos && line[first] == '|';
        script += continues ? line.substr(first + 1) : '\n' + line;
    }
    for (std::size_t end = script.size(); end != 0 && end != std::string::npos;
         end = script.rfind('\n', end - 1)) {
        World world;
        world.run(script.substr(0, end));
        (world.*destroy)();
        world.run("wait 90; answers; wait 0; answers; system wake; system screens; wait 10000; answers");
    }
}

} // namespace lumenvale
