// SPDX-License-Identifier: MIT
// The program's delegate on a desktop, displays and a clock that the test turns by hand.
#pragma once

#include "FakeShell.h"
#include "app/desktop/AppDelegate.h"
#include "base/MemoryUserDefaults.h"
#include "support/FakeDisplayHardware.h"
#include "support/FakeHotKeyService.h"
#include "support/FakeScreenSource.h"
#include "support/FakeStartupService.h"
#include "support/ManualClock.h"
#include "support/Views.h"

#include <QWindow>
#include <gtest/gtest.h>

namespace lumenvale {

struct NoDiagnostics final : Diagnostics {
    std::vector<Finding> examine(const std::vector<DisplayInfo>&) override { return {}; }
};

class AppDelegateFixture : public testing::Test {
protected:
    AppDelegateFixture() { defaults.set("hasOpenedSettings", true); }

    void savePreset(const std::string& name, double levelOfA)
    {
        PresetStore presets(defaults);
        presets.rename(presets.addPreset({{"A", levelOfA}}, {}).id, name);
    }

    void plug(const std::string& id)
    {
        const bool isFirst = screens.list.empty();
        screens.connect(id, std::uint32_t(screens.list.size() + 1)).isMain = isFirst;
        hardware.monitors[id].brightness = 0.5;
    }

    void start()
    {
        delegate.reset();
        delegate = std::make_unique<AppDelegate>(AppServices{
            hardware, defaults, screens, events, diagnostics, startup, &hotKeys, clock, shell, portableWords, {}});
        delegate->applicationDidFinishLaunching();
    }
    void launch() { start(), settle(); }

    /// Lets everything that is under way come to its end.
    void settle()
    {
        for (int i = 0; i < 15; ++i) {
            clock.advance(std::chrono::milliseconds(100));
            hardware.answerAll();
            turnLoop();
        }
    }

    double levelOf(const std::string& id)
    {
        settle();
        return hardware.monitors[id].brightness;
    }

    template <typename Window>
    static QWidget* visible()
    {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->isVisible() && dynamic_cast<Window*>(each))
                return each;
        }
        return nullptr;
    }
    static QWidget* panel() { return visible<BrightnessPanel>(); }
    static QWidget* settings() { return visible<SettingsWindow>(); }
    void clickItem() { desktop.item->activated(); }

    static void send(QWidget& window, QEvent&& event)
    {
        QCoreApplication::sendEvent(window.windowHandle(), &event);
        turnLoop();
    }
    static void press(QWidget& window, int key) { send(window, QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier)); }
    static void press(QWidget& window, QPointF place)
    {
        send(window, QMouseEvent(QEvent::MouseButtonPress, {}, {}, place, Qt::LeftButton, Qt::LeftButton, {}));
    }

    std::vector<std::string> dockTitles() const
    {
        std::vector<std::string> list;
        for (const MenuEntry& each : desktop.dock.menu())
            list.push_back(each.id.empty() ? "-" : each.title + (each.isChecked ? " ✓" : ""));
        return list;
    }

    MemoryUserDefaults defaults;
    FakeScreenSource screens;
    FakeSystemEvents events;
    FakeDisplayHardware hardware;
    FakeStartupService startup;
    FakeHotKeyService hotKeys;
    NoDiagnostics diagnostics;
    ManualClock clock;
    FakeDesktop desktop;
    Shell shell = makeFakeShell(desktop);
    std::unique_ptr<AppDelegate> delegate;
};

} // namespace lumenvale
