// SPDX-License-Identifier: MIT
// Sleep, wake and changes of the screens, as AppKit announces them, as long as it exists. Main thread.
#pragma once

#include "displays/SystemEvents.h"

#include <functional>
#include <memory>

namespace lumenvale {

class WorkspaceNotifications {
public:
    explicit WorkspaceNotifications(std::function<void(SystemEvent)> announced);
    WorkspaceNotifications(const WorkspaceNotifications&) = delete;
    WorkspaceNotifications& operator=(const WorkspaceNotifications&) = delete;
    ~WorkspaceNotifications();

private:
    struct Tokens;
    std::unique_ptr<Tokens> tokens;
};

} // namespace lumenvale
