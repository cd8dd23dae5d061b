// SPDX-License-Identifier: MIT
// A desktop that remembers what the program shows on it, and whose user is the test.
#pragma once

#include "platform/Shell.h"

#include <string>
#include <utility>
#include <vector>

namespace lumenvale {

/// What the fakes share with the test.
struct FakeDesktop {
    struct Item {
        StatusItemContent content;
        std::optional<Rect> frame;
        int menuChanges = 0;
    };

    Item* item = nullptr; ///< the status item, while there is one
    DockContent dock;
    std::vector<ActivationPolicy> policies;
    int dockMenuChanges = 0;
    std::function<void()> clickedOutside; ///< while it is monitored
    int focused = 0;
    int dressed = 0;
    std::string activationToken;
    std::optional<Rect> nextItemFrame = Rect{400, 0, 24, 24};
};

class FakeStatusItem final : public StatusItem {
public:
    FakeStatusItem(FakeDesktop& shared, StatusItemContent content) : desktop(shared)
    {
        state.content = std::move(content);
        state.frame = desktop.nextItemFrame;
        desktop.item = &state;
    }
    ~FakeStatusItem() override { desktop.item = nullptr; }
    std::optional<Rect> frame() const override { return state.frame; }
    void menuChanged() override { ++state.menuChanges; }

private:
    FakeDesktop& desktop;
    FakeDesktop::Item state;
};

class FakeStatusBar final : public StatusBar {
public:
    explicit FakeStatusBar(FakeDesktop& shared) : desktop(shared) {}
    std::unique_ptr<StatusItem> createItem(StatusItemContent content) override
    {
        return std::make_unique<FakeStatusItem>(desktop, std::move(content));
    }

private:
    FakeDesktop& desktop;
};

class FakeDock final : public Dock {
public:
    explicit FakeDock(FakeDesktop& shared) : desktop(shared) {}
    void setContent(DockContent content) override { desktop.dock = std::move(content); }
    void setActivationPolicy(ActivationPolicy policy) override { desktop.policies.push_back(policy); }
    void menuChanged() override { ++desktop.dockMenuChanges; }
    void cancelTracking() override {}

private:
    FakeDesktop& desktop;
};

class FakeClickMonitor final : public EventMonitor {
public:
    FakeClickMonitor(FakeDesktop& shared, std::function<void()> clicked) : desktop(shared)
    {
        desktop.clickedOutside = std::move(clicked);
    }
    ~FakeClickMonitor() override { desktop.clickedOutside = nullptr; }

private:
    FakeDesktop& desktop;
};

class FakePanelWindows final : public PanelWindows {
public:
    explicit FakePanelWindows(FakeDesktop& shared) : desktop(shared) {}
    bool canBlend() override { return true; }
    bool dress(WindowHandle) override
    {
        ++desktop.dressed;
        return false;
    }
    void blurBehind(WindowHandle, double, double, double) override {}
    void focus(WindowHandle) override { ++desktop.focused; }
    std::unique_ptr<EventMonitor> monitorOutsideClicks(WindowHandle, std::function<void()> clicked) override
    {
        return std::make_unique<FakeClickMonitor>(desktop, std::move(clicked));
    }
    void useActivationToken(const std::string& token) override { desktop.activationToken = token; }

private:
    FakeDesktop& desktop;
};

inline Shell makeFakeShell(FakeDesktop& desktop)
{
    return {std::make_unique<FakeStatusBar>(desktop), std::make_unique<FakeDock>(desktop),
            std::make_unique<FakePanelWindows>(desktop)};
}

} // namespace lumenvale
