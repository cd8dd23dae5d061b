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
#include "support/FakeSystemEvents.h"
#include "support/ManualClock.h"
#include "support/Views.h"

#include <QWindow>

namespace lumenvale {

struct NoDiagnostics final : Diagnostics {
    std::vector<Finding> examine(const std::vector<DisplayInfo>&) override { return {}; }
};

class AppDelegateTest : public testing::Test {
protected:
    AppDelegateTest() { defaults.set("hasOpenedSettings", true); }

    void savePreset(const std::string& name, const std::map<std::string, double>& values)
    {
        PresetStore presets(defaults);
        presets.rename(presets.addPreset(values, {}).id, name);
    }

    void plug(const std::string& id, double brightness = 0.5)
    {
        const bool isFirst = screens.list.empty();
        screens.connect(id, std::uint32_t(screens.list.size() + 1)).isMain = isFirst;
        hardware.monitors[id].brightness = brightness;
    }

    void start()
    {
        delegate = std::make_unique<AppDelegate>(
            AppServices{hardware, defaults, screens, events, diagnostics, startup, &hotKeys, clock, shell, {}});
        delegate->applicationDidFinishLaunching();
    }
    void launch()
    {
        start();
        settle();
    }

    /// Lets everything that is under way come to its end.
    void settle()
    {
        for (int i = 0; i < 5; ++i) {
            clock.advance(std::chrono::milliseconds(100));
            hardware.answerAll();
            turnLoop();
        }
    }

    template <typename Window>
    static QWidget* visibleWindow()
    {
        for (QWidget* each : QApplication::topLevelWidgets()) {
            if (each->isVisible() && dynamic_cast<Window*>(each))
                return each;
        }
        return nullptr;
    }
    static QWidget* panel() { return visibleWindow<BrightnessPanel>(); }
    static QWidget* settings() { return visibleWindow<SettingsWindow>(); }

    static void pressKeyIn(QWidget& window, int key)
    {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QCoreApplication::sendEvent(window.windowHandle(), &press);
        turnLoop();
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
