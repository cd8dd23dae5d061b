// SPDX-License-Identifier: MIT
// Displays whose list and pending writes are in the test's hands.
#pragma once

#include "displays/PresetDisplayControlling.h"

#include <algorithm>
#include <coroutine>
#include <functional>
#include <utility>

namespace lumenvale {

class FakePresetDisplays final : public PresetDisplayControlling {
public:
    const std::vector<DisplayInfo>& displayList() const override { return list; }

    Task<> pendingWritesFinished() override { co_await Wait(*this); }

    void apply(const std::map<std::string, double>& levels) override
    {
        applied.push_back(levels);
        for (const auto& [id, level] : levels)
            show(id, level);
    }
    void setLevel(const std::string& id, double level) override
    {
        set.emplace_back(id, level);
        show(id, level);
    }

    /// Ends the writes that are waited for now, in the order of the waits.
    void finishWrites()
    {
        const auto finished = std::exchange(waiting, {});
        resuming = finished;
        while (!resuming.empty()) {
            Wait* next = resuming.front();
            resuming.erase(resuming.begin());
            next->waiter.resume();
        }
    }
    std::size_t waitCount() const { return waiting.size(); }

    /// Adds a display; `maximum` 0 makes it one with native control.
    DisplayInfo& add(const std::string& id, std::optional<double> brightness, std::uint16_t maximum = 100)
    {
        DisplayInfo display;
        display.id = id;
        display.displayID = static_cast<std::uint32_t>(list.size() + 1);
        display.name = "Name of " + id;
        display.brightness = brightness;
        display.method = maximum == 0 ? ControlMethod::apple : ControlMethod::ddc;
        display.maximum = maximum;
        return list.emplace_back(std::move(display));
    }

    /// Shows a level as the display list would, and announces the list after each single change.
    void show(const std::string& id, double level)
    {
        const auto display = std::ranges::find(list, id, &DisplayInfo::id);
        if (display == list.end())
            return;
        display->brightness = quantise(*display, level);
        if (changed)
            changed(list);
    }

    std::vector<DisplayInfo> list;
    std::vector<std::map<std::string, double>> applied;
    std::vector<std::pair<std::string, double>> set;
    std::function<void(const std::vector<DisplayInfo>&)> changed;

private:
    struct Wait {
        explicit Wait(FakePresetDisplays& source) : displays(source) {}
        Wait(const Wait&) = delete;
        Wait& operator=(const Wait&) = delete;
        ~Wait()
        {
            std::erase(displays.waiting, this);
            std::erase(displays.resuming, this);
        }

        bool await_ready() const noexcept { return false; }
        void await_suspend(std::coroutine_handle<> handle)
        {
            waiter = handle;
            displays.waiting.push_back(this);
        }
        void await_resume() const noexcept {}

        FakePresetDisplays& displays;
        std::coroutine_handle<> waiter;
    };

    std::vector<Wait*> waiting;
    std::vector<Wait*> resuming;
};

} // namespace lumenvale
