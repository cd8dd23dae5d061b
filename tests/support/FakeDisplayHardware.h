// SPDX-License-Identifier: MIT
// Monitors without wires: does what is asked of it when the test lets it answer, in any order. A call whose task
// is destroyed is dropped, unless it is the first of the queue: that one has begun and is finished.
#pragma once

#include "displays/DisplayHardwareControlling.h"

#include <algorithm>
#include <cmath>
#include <coroutine>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace lumenvale {

/// What a fake monitor is and does. Changing `brightness` is someone turning its own buttons.
struct FakeMonitor {
    ControlMethod method = ControlMethod::ddc;
    double brightness = 0.5;
    std::uint16_t maximum = 100;
    std::optional<BrightnessError> writeError; ///< how every write ends; only `readFailed` takes the value over
    bool isReadable = true;
    double highest = 1.0; ///< takes no value over this one, and reports what it took
};

class FakeDisplayHardware final : public DisplayHardwareControlling {
public:
    using Outcome = tl::expected<double, BrightnessError>;
    using Readings = std::map<std::string, double>;

    Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) override
    {
        std::string text = "inspect";
        for (const DisplayInfo& each : displays)
            text += " " + each.id;
        return answerTo<std::vector<DisplayInfo>>(text, [this, displays] { return inspected(displays); });
    }
    Task<Readings> currentBrightness(std::vector<std::string> ids) override
    {
        std::string text = "read";
        for (const std::string& id : ids)
            text += " " + id;
        return answerTo<Readings>(text, [this, ids] { return read(ids); });
    }
    Task<Outcome> setBrightness(double value, std::string id) override
    {
        char number[32];
        std::snprintf(number, sizeof number, " %.6g", value);
        return answerTo<Outcome>("set " + id + number, [this, value, id] { return written(value, id); });
    }

    std::size_t waitingCount() const { return calls.size(); }
    /// Where the waiting call at this position stands in `log`.
    std::size_t numberOf(std::size_t position) const { return calls.at(position)->number; }
    /// How many calls with this text's beginning are waited for.
    std::size_t liveCalls(const std::string& beginning) const
    {
        return static_cast<std::size_t>(std::ranges::count_if(
            calls, [&](const auto& each) { return each->waiter && log[each->number].starts_with(beginning); }));
    }
    /// Does what the call at this position asks, and answers it.
    void answer(std::size_t position = 0)
    {
        const std::shared_ptr<Call> call = calls.at(position);
        calls.erase(calls.begin() + static_cast<std::ptrdiff_t>(position));
        call->perform();
        if (const auto waiter = std::exchange(call->waiter, nullptr))
            waiter.resume();
    }
    void answerAll()
    {
        while (!calls.empty())
            answer();
    }

    std::map<std::string, FakeMonitor> monitors;        ///< those that are connected
    bool holdsAnswers = true;                           ///< false: calls are answered before they return
    std::vector<std::string> log;                       ///< every call: "inspect A B", "read A", "set A 0.42"
    std::vector<std::pair<std::string, double>> writes; ///< what reached a monitor, in order

private:
    struct Call {
        std::size_t number = 0;
        std::function<void()> perform;
        std::coroutine_handle<> waiter;
    };

    /// Awaits the turn of a call.
    struct Turn {
        Turn(FakeDisplayHardware& owner, std::function<void()> perform) : hardware(owner)
        {
            call->perform = std::move(perform);
        }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;
        ~Turn()
        {
            call->waiter = nullptr;
            if (!hardware.calls.empty() && hardware.calls.front() != call)
                std::erase(hardware.calls, call);
        }

        bool await_ready() const
        {
            if (!hardware.holdsAnswers)
                call->perform();
            return !hardware.holdsAnswers;
        }
        void await_suspend(std::coroutine_handle<> handle)
        {
            call->waiter = handle;
            hardware.calls.push_back(call);
        }
        void await_resume() const {}

        FakeDisplayHardware& hardware;
        std::shared_ptr<Call> call = std::make_shared<Call>();
    };

    template <typename Result>
    Task<Result> answerTo(std::string text, std::function<Result()> work)
    {
        const auto result = std::make_shared<std::optional<Result>>();
        Turn turn(*this, [work, result] { result->emplace(work()); });
        turn.call->number = log.size();
        log.push_back(text);
        co_await turn;
        co_return std::move(**result);
    }

    std::vector<DisplayInfo> inspected(std::vector<DisplayInfo> displays) const
    {
        for (DisplayInfo& each : displays) {
            const auto monitor = monitors.find(each.id);
            if (monitor == monitors.end() || monitor->second.method == ControlMethod::unavailable) {
                each.status = "No control.";
                continue;
            }
            each.method = monitor->second.method;
            each.maximum = monitor->second.maximum;
            if (monitor->second.isReadable)
                each.brightness = monitor->second.brightness;
            each.status = "Inspected.";
        }
        return displays;
    }
    Readings read(const std::vector<std::string>& ids) const
    {
        Readings readings;
        for (const std::string& id : ids) {
            const auto monitor = monitors.find(id);
            if (monitor != monitors.end() && monitor->second.isReadable)
                readings[id] = monitor->second.brightness;
        }
        return readings;
    }
    Outcome written(double value, const std::string& id)
    {
        const auto found = monitors.find(id);
        if (found == monitors.end() || found->second.method == ControlMethod::unavailable)
            return tl::unexpected(BrightnessError::disconnected);
        FakeMonitor& monitor = found->second;
        writes.emplace_back(id, value);
        const double taken = std::min(value, monitor.highest);
        const double units = monitor.maximum;
        if (!monitor.writeError || monitor.writeError == BrightnessError::readFailed)
            monitor.brightness = monitor.method == ControlMethod::ddc ? std::round(taken * units) / units : taken;
        if (monitor.writeError)
            return tl::unexpected(*monitor.writeError);
        return monitor.brightness;
    }

    std::vector<std::shared_ptr<Call>> calls;
};

} // namespace lumenvale
