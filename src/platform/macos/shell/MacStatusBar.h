// SPDX-License-Identifier: MIT
// Items in the menu bar. An NSStatusItem, not QSystemTrayIcon: the frame of its button is needed, and its
// click must not open a menu. Main thread.
#pragma once

#include "platform/Shell.h"

namespace lumenvale {

class MacStatusBar final : public StatusBar {
public:
    std::unique_ptr<StatusItem> createItem(StatusItemContent content) override;
    std::optional<bool> showsItems() override { return true; }
    void observe(std::function<void()>) override {} // it always shows them
};

} // namespace lumenvale
