// SPDX-License-Identifier: MIT
// Monitors without wires: does what is asked of it when the test lets it answer, in any order. A call whose task
// is destroyed is dropped, unless it is the first of the queue: that one has begun and is finished.
#pragma once

#include "displays/DisplayHardwareControlling.h"

#include <algorithm>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>

namespace lumenvale {

/// What a fake monitor is and does. Changing `brightness` is someone turning its own buttons.
struct FakeMonitor {
    ControlMethod method = ControlMethod::ddc;
    double brightness = 0.5;
    std::uint16_t maximum = 100;
    std::optional<LevelRange> levels{};          ///< of a native one
    std::optional<BrightnessError> writeError{}; ///< how every write ends; only `readFailed` takes the value over
    bool isReadable = true;
    double highest = 1.0; ///< takes no value over this one, and reports what it took
};

class FakeDisplayHardware final : public DisplayHardwareControlling {
public:
    using Outcome = tl::expected<double, BrightnessError>;
    using Readings = std::map<std::string, double>;

    Task<std::vector<DisplayInfo>> inspect(std::vector<DisplayInfo> displays) override
    {
        return inspect("inspect", std::move(displays));
    }
    Task<std::vector<DisplayInfo>> inspectAgain(std::vector<DisplayInfo> displays) override
    {
        return inspect("again", std::move(displays));
    }
    Task<std::vector<DisplayInfo>> inspect(std::string text, std::vector<DisplayInfo> displays)
    {
        for (const DisplayInfo& each : displays)
            text += " " + each.id;
        return answerTo<std::vector<DisplayInfo>>(text, [this, displays]() mutable {
            for (DisplayInfo& each : displays) {
                const FakeMonitor* monitor = controlled(each.id);
                each.status = monitor ? "Inspected." : "No control.";
                if (!monitor)
                    continue;
                each.method = monitor->method;
                each.maximum = monitor->maximum;
                each.levels = monitor->levels;
                if (monitor->isReadable)
                    each.brightness = monitor->brightness;
            }
            return displays;
        });
    }
    Task<Readings> currentBrightness(std::vector<std::string> ids) override
    {
        std::string text = "read";
        for (const std::string& id : ids)
            text += " " + id;
        return answerTo<Readings>(text, [this, ids] {
            Readings readings;
            for (const std::string& id : ids) {
                const FakeMonitor* monitor = controlled(id);
                if (monitor && monitor->isReadable)
                    readings[id] = monitor->brightness;
            }
            return readings;
        });
    }
    Task<Outcome> setBrightness(double value, std::string id) override
    {
        std::ostringstream text;
        text << "set " << id << " " << value;
        return answerTo<Outcome>(text.str(), [this, value, id]() -> Outcome {
            FakeMonitor* monitor = controlled(id);
            if (!monitor)
                return tl::unexpected(BrightnessError::disconnected);
            writes.emplace_back(id, value);
            const DisplayInfo scale{
                .method = monitor->method, .maximum = monitor->maximum, .levels = monitor->levels};
            if (!monitor->writeError || monitor->writeError == BrightnessError::readFailed)
                monitor->brightness = quantise(scale, std::min(value, monitor->highest));
            if (monitor->writeError)
                return tl::unexpected(*monitor->writeError);
            return monitor->brightness;
        });
    }

    Task<std::vector<BrightnessChange>> changeBrightness(std::vector<DisplayInfo>,
                                                         std::function<double(const DisplayInfo&)>) override
    {
        return answerTo<std::vector<BrightnessChange>>("change", [] { return std::vector<BrightnessChange>(); });
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
        explicit Turn(FakeDisplayHardware& hardware) : hardware(hardware) { call->number = hardware.log.size(); }
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
        Turn turn(*this);
        turn.call->perform = [work, result] { result->emplace(work()); };
        log.push_back(text);
        co_await turn;
        co_return std::move(**result);
    }
    /// The monitor; null where there is none that can be controlled.
    FakeMonitor* controlled(const std::string& id)
    {
        const auto found = monitors.find(id);
        const bool isControlled = found != monitors.end() && found->second.method != ControlMethod::unavailable;
        return isControlled ? &found->second : nullptr;
    }

    std::vector<std::shared_ptr<Call>> calls;
};

} // namespace lumenvale
