// SPDX-License-Identifier: MIT
// Sleep, wake and changes of the displays. Watches from the first subscription on. Main thread.
#pragma once

#include "displays/SystemEvents.h"
#include "platform/macos/displays/BackgroundActivity.h"
#include "platform/macos/displays/DisplayReconfiguration.h"
#include "platform/macos/displays/WorkspaceNotifications.h"

#include <optional>

namespace lumenvale {

class MacSystemEvents final : public SystemEvents {
public:
    Subscription subscribe(std::function<void(SystemEvent)> observer) override;

private:
    /// AppKit tells when its screens have changed. CoreGraphics tells of displays that are no screens, too: those
    /// that mirror another. One change may be told twice.
    struct Sources {
        explicit Sources(const Signal<SystemEvent>& events);

        BackgroundActivity activity;
        WorkspaceNotifications notifications;
        DisplayReconfiguration reconfiguration;
    };

    Signal<SystemEvent> events;
    std::optional<Sources> sources;
};

} // namespace lumenvale
