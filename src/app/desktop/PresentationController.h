// SPDX-License-Identifier: MIT
// Shows the program as the user chose: as a status item, in the Dock (elsewhere: among the applications), or as
// both. Where the system shows no status items, the Dock stands in for them. Main thread only.
#pragma once

#include "platform/Shell.h"
#include "preferences/GeneralPreferences.h"

#include <functional>
#include <memory>
#include <optional>

namespace lumenvale {

class PresentationController {
public:
    /// The references must outlive the controller. Of `content` it fills in title, tool tip and image.
    PresentationController(Shell& shell, GeneralPreferences& preferences, StatusItemContent content);
    PresentationController(const PresentationController&) = delete;
    PresentationController& operator=(const PresentationController&) = delete;
    /// Takes the status item away.
    ~PresentationController();

    /// Shows the program, after the callbacks are set, and from then on follows preferences and system.
    void start();
    /// Whether an icon of the program can be seen; none while the system has not said whether it shows status
    /// items.
    std::optional<bool> showsIcon() const;

    /// With the item that is there until the next call; null: there is none.
    std::function<void(StatusItem*)> statusItemChanged;
    /// After a choice of the user, which can hide the program's windows.
    std::function<void()> applied;
    /// When the system's answer may be another one.
    std::function<void()> statusAreaChanged;

private:
    void updateStatusArea();
    void apply(AppPresentation presentation);
    void updateActivationPolicy();
    void setStatusItem(std::unique_ptr<StatusItem> item);

    Shell& shell;
    GeneralPreferences& preferences;
    StatusItemContent content;
    std::unique_ptr<StatusItem> statusItem;
};

} // namespace lumenvale
