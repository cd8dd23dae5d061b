// SPDX-License-Identifier: MIT
// A list of callbacks; main thread only. Safe while it emits: subscribing (the newcomer waits for the next
// emission), unsubscribing, emitting again and destroying the Signal.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace lumenvale {

/// The subscriber's end of a connection; destroying it disconnects. May outlive what it is connected to.
class [[nodiscard]] Subscription {
public:
    Subscription() = default;
    explicit Subscription(std::shared_ptr<void> owned) : slot(std::move(owned)) {}

    void reset() { slot.reset(); }

private:
    std::shared_ptr<void> slot; // the only owner; the Signal refers to it weakly
};

template <typename... Args>
class Signal {
public:
    using Slot = std::function<void(Args...)>;

    Signal() = default;
    Signal(const Signal&) = delete;
    Signal& operator=(const Signal&) = delete;

    Subscription subscribe(Slot callback)
    {
        std::erase_if(slots, [](const std::weak_ptr<Slot>& each) { return each.expired(); });
        auto slot = std::make_shared<Slot>(std::move(callback));
        slots.push_back(slot);
        return Subscription(std::move(slot));
    }

    void emit(Args... args) const
    {
        const auto current = slots; // callbacks may change the list, or destroy the Signal
        for (const std::weak_ptr<Slot>& each : current) {
            if (const auto slot = each.lock())
                (*slot)(args...);
        }
    }

private:
    std::vector<std::weak_ptr<Slot>> slots;
};

} // namespace lumenvale
