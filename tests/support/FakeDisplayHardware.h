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

    /// The calls that wait for an answer, in the order in which they came.
    std::vector<std::string> waiting() const
    {
        std::vector<std::string> texts;
        for (const auto& each : calls)
            texts.push_back(each->text);
        return texts;
    }
    /// Where the waiting call at this position stands in `log`.
    std::size_t numberOf(std::size_t position) const { return calls.at(position)->number; }
    /// How many calls with this text's beginning are waited for by somebody.
    std::size_t liveCalls(const std::string& beginning) const
    {
        return static_cast<std::size_t>(std::count_if(calls.begin(), calls.end(), [&](const auto& each) {
            return each->waiter && each->text.starts_with(beginning);
        }));
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
    /// Answers until nobody waits.
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
        std::string text;
        std::size_t number = 0;
        std::function<void()> perform;
        std::coroutine_handle<> waiter;
    };

    template <typename Result>
    class Answer {
    public:
        Answer(FakeDisplayHardware& source, std::string text, const std::function<Result()>& work)
            : hardware(source)
        {
            call->text = std::move(text);
            call->perform = [work, kept = result] { kept->emplace(work()); };
        }
        Answer(const Answer&) = delete;
        Answer& operator=(const Answer&) = delete;
        ~Answer()
        {
            call->waiter = nullptr;
            if (!hardware.calls.empty() && hardware.calls.front() != call)
                std::erase(hardware.calls, call);
        }

        bool await_ready()
        {
            call->number = hardware.log.size();
            hardware.log.push_back(call->text);
            if (!hardware.holdsAnswers)
                call->perform();
            return !hardware.holdsAnswers;
        }
        void await_suspend(std::coroutine_handle<> handle)
        {
            call->waiter = handle;
            hardware.calls.push_back(call);
        }
        Result await_resume() { return std::move(**result); }

    private:
        FakeDisplayHardware& hardware;
        std::shared_ptr<Call> call = std::make_shared<Call>();
        std::shared_ptr<std::optional<Result>> result = std::make_shared<std::optional<Result>>();
    };

    template <typename Result>
    Task<Result> answerTo(std::string text, std::function<Result()> work)
    {
        Answer<Result> answer(*this, std::move(text), work);
        co_return co_await answer;
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
        const double units = monitor.maximum;
        if (!monitor.writeError || monitor.writeError == BrightnessError::readFailed)
            monitor.brightness = monitor.method == ControlMethod::ddc ? std::round(value * units) / units : value;
        if (monitor.writeError)
            return tl::unexpected(*monitor.writeError);
        return monitor.brightness;
    }

    std::vector<std::shared_ptr<Call>> calls;
};

} // namespace lumenvale
