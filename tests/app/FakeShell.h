// SPDX-License-Identifier: MIT
// A desktop that remembers what the program shows on it, and whose user is the test.
#pragma once

#include "platform/Shell.h"

#include <utility>

namespace lumenvale {

/// What the fakes share with the test.
struct FakeDesktop {
    std::optional<StatusItemContent> item; ///< while there is one
    DockContent dock;
    std::vector<ActivationPolicy> policies;
    int menuChanges = 0;                  ///< of the Dock's
    std::function<void()> clickedOutside; ///< while it is monitored
    int dressed = 0;
    std::optional<bool> showsItems = true; ///< the status bar
    std::function<void()> statusBarChanged;
};

template <typename Interface>
struct OnDesktop : Interface {
    explicit OnDesktop(FakeDesktop& desktop) : desktop(desktop) {}
    FakeDesktop& desktop;
};

struct FakeStatusItem final : OnDesktop<StatusItem> {
    using OnDesktop::OnDesktop;
    ~FakeStatusItem() override { desktop.item.reset(); }
    std::optional<Rect> frame() const override { return Rect{400, 0, 24, 24}; }
    void menuChanged() override {}
};

struct FakeStatusBar final : OnDesktop<StatusBar> {
    using OnDesktop::OnDesktop;
    std::unique_ptr<StatusItem> createItem(StatusItemContent content) override
    {
        desktop.item = std::move(content);
        return std::make_unique<FakeStatusItem>(desktop);
    }
    std::optional<bool> showsItems() override { return desktop.showsItems; }
    void observe(std::function<void()> changed) override { desktop.statusBarChanged = std::move(changed); }
};

struct FakeDock final : OnDesktop<Dock> {
    using OnDesktop::OnDesktop;
    void setContent(DockContent content) override { desktop.dock = std::move(content); }
    void setActivationPolicy(ActivationPolicy policy) override { desktop.policies.push_back(policy); }
    void menuChanged() override { ++desktop.menuChanges; }
    void cancelTracking() override {}
};

struct FakeClickMonitor final : OnDesktop<EventMonitor> {
    using OnDesktop::OnDesktop;
    ~FakeClickMonitor() override { desktop.clickedOutside = nullptr; }
};

struct FakePanelWindows final : OnDesktop<PanelWindows> {
    using OnDesktop::OnDesktop;
    PanelGround ground() override { return {}; }
    void dress(WindowHandle) override { ++desktop.dressed; }
    void setShape(WindowHandle, const Rect&, double) override {}
    void focus(WindowHandle) override {}
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle, std::function<void()> clicked) override
    {
        desktop.clickedOutside = std::move(clicked);
        return std::make_unique<FakeClickMonitor>(desktop);
    }
    void useActivationToken(const std::string&) override {}
};

inline Shell makeFakeShell(FakeDesktop& desktop)
{
    return {std::make_unique<FakeStatusBar>(desktop), std::make_unique<FakeDock>(desktop),
            std::make_unique<FakePanelWindows>(desktop)};
}

} // namespace lumenvale
