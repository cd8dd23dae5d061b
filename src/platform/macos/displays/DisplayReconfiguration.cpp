// SPDX-License-Identifier: MIT
#include "platform/macos/displays/DisplayReconfiguration.h"

#include <utility>

namespace lumenvale {

DisplayReconfiguration::DisplayReconfiguration(std::function<void()> changed)
    : changed(std::move(changed)),
      isRegistered(CGDisplayRegisterReconfigurationCallback(&DisplayReconfiguration::reconfigured, this) ==
                   kCGErrorSuccess)
{
}

DisplayReconfiguration::~DisplayReconfiguration()
{
    if (isRegistered)
        CGDisplayRemoveReconfigurationCallback(&DisplayReconfiguration::reconfigured, this);
}

void DisplayReconfiguration::reconfigured(CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags flags,
                                          void* self)
{
    if (flags & kCGDisplayBeginConfigurationFlag) // the announcement; the change itself is told after it
        return;
    const auto call = static_cast<DisplayReconfiguration*>(self)->changed; // it may end this object
    call();
}

} // namespace lumenvale
