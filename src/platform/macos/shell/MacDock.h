// SPDX-License-Identifier: MIT
// The Dock icon. The menu is a QMenu, because the Dock asks Qt's application delegate for it. Main thread.
#pragma once

#include "platform/Shell.h"
#include "platform/macos/shell/ApplicationControl.h"

#include <QMenu>
#include <optional>

namespace lumenvale {

class MacDock final : public Dock {
public:
    MacDock();
    MacDock(const MacDock&) = delete;
    MacDock& operator=(const MacDock&) = delete;
    ~MacDock() override;

    void setContent(DockContent next) override;
    void setActivationPolicy(ActivationPolicy policy) override { setInDock(policy == ActivationPolicy::regular); }
    void menuChanged() override {} // asked each time the menu opens
    void cancelTracking() override;

private:
    void menuWillOpen();

    DockContent content;
    QMenu menu;
    bool isOpening = false;
    std::optional<ReopenHandler> reopenHandler;
};

} // namespace lumenvale
