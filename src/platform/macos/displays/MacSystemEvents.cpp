// SPDX-License-Identifier: MIT
#include "platform/macos/displays/MacSystemEvents.h"

#include <utility>

namespace lumenvale {

MacSystemEvents::Sources::Sources(const Signal<SystemEvent>& events)
    : notifications([&events](SystemEvent event) { events.emit(event); }),
      reconfiguration([&events] { events.emit(SystemEvent::screenParametersChanged); })
{
}

Subscription MacSystemEvents::subscribe(std::function<void(SystemEvent)> observer)
{
    if (!sources)
        sources.emplace(events);
    return events.subscribe(std::move(observer));
}

} // namespace lumenvale
