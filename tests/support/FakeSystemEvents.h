// SPDX-License-Identifier: MIT
// System events that the test sends.
#pragma once

#include "displays/SystemEvents.h"

#include <utility>

namespace lumenvale {

class FakeSystemEvents final : public SystemEvents {
public:
    Subscription subscribe(std::function<void(SystemEvent)> observer) override
    {
        return signal.subscribe(std::move(observer));
    }
    void send(SystemEvent event) { signal.emit(event); }

private:
    Signal<SystemEvent> signal;
};

} // namespace lumenvale
