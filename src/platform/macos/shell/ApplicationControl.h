// SPDX-License-Identifier: MIT
// The program as the system's Dock sees it: with or without an icon, and clicked. Main thread, after the
// application object.
#pragma once

#include "base/Signal.h"

#include <functional>
#include <memory>

namespace lumenvale {

/// Shows or hides the Dock icon; does nothing when that is so already. A program that was the active one stays it.
void setInDock(bool isShown);

/// Emitted by `setInDock` when it has changed something: the system may have taken status items out of the bar.
Signal<>& dockChanged();

/// Brings the program to the front of the others.
void activateApplication();

/// Closes `menu`, an NSMenu, if it is open.
void cancelMenuTracking(void* menu);

/// Hears of clicks on the Dock icon, as long as it exists.
class ReopenHandler {
public:
    explicit ReopenHandler(std::function<void()> reopened);
    ReopenHandler(const ReopenHandler&) = delete;
    ReopenHandler& operator=(const ReopenHandler&) = delete;
    ~ReopenHandler();

private:
    struct Registration;
    std::unique_ptr<Registration> registration;
};

} // namespace lumenvale
