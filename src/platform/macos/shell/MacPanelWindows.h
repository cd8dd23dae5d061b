// SPDX-License-Identifier: MIT
// Makes of Qt's window what a floating panel is on macOS. All of it is set on the native window and lost when Qt
// makes another one or sets the window's flags, so it is set again for each window. Main thread.
#pragma once

#include "platform/Shell.h"

namespace lumenvale {

class MacPanelWindows final : public PanelWindows {
public:
    PanelGround ground() override { return {.isDrawn = true}; }
    void dress(WindowHandle window) override;
    void setShape(WindowHandle window, const Rect& panel, double cornerRadius) override;
    /// A dressed panel takes the keyboard without making the program the active one; any other window comes to the
    /// front with the program.
    void focus(WindowHandle window) override;
    /// Clicks that go to other programs. Those on our own windows are seen before they are dispatched.
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle panel, std::function<void()> clicked) override;
    void useActivationToken(const std::string&) override {} // of other systems
};

} // namespace lumenvale
