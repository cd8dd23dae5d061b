// SPDX-License-Identifier: MIT
// Owns the long-lived objects of the desktop program: start-up and shutdown, the settings window, and what the
// program is asked from outside. The panel is its `PanelController`'s, the status item its
// `PresentationController`'s, the menus are its `MenuPublisher`'s. Made by `LumenvaleApp`; main thread only.
#pragma once

#include "app/cli/DesktopRequest.h"
#include "app/desktop/MenuPublisher.h"
#include "app/desktop/PanelController.h"
#include "app/desktop/PresentationController.h"
#include "app/desktop/RemoteRequests.h"
#include "app/desktop/SettingsWindow.h"
#include "base/Words.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayStore.h"
#include "platform/Shell.h"
#include "preferences/BuildInfo.h"
#include "preferences/GeneralPreferences.h"
#include "presets/GlobalShortcuts.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"

#include <QMenu>
#include <QMenuBar>
#include <memory>
#include <optional>

namespace lumenvale {

/// What the delegate works with; everything outlives it.
struct AppServices {
    DisplayHardwareControlling& hardware;
    UserDefaults& defaults;
    ScreenSource& screens;
    SystemEvents& events;
    Diagnostics& diagnostics;
    StartupService& startup;
    HotKeyService* hotKeys = nullptr; ///< null: the system has none
    Clock& clock;
    Shell& shell;
    Words words;
    BuildInfo build;
};

class AppDelegate {
public:
    /// Creates the three stores, and nothing that shows.
    explicit AppDelegate(const AppServices& services);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;
    ~AppDelegate();

    /// Start-up, once the event loop is about to run.
    void applicationDidFinishLaunching();
    /// Shutdown: nothing shows and nothing is registered any more when it returns. Safe to call again.
    void applicationWillTerminate();
    /// The Dock icon was clicked.
    void applicationShouldHandleReopen();
    /// After a start that asked for nothing: shows the panel if nothing else of the program can be seen. That may
    /// be known only later.
    void showUnlessVisible();
    /// What another copy of the program was asked to do. A preset waits until the displays are known.
    void perform(const DesktopRequest& request);
    void showSettings();

private:
    PresetEditor& presetEditor(); ///< creates `editor` on first use
    void activatePreset(Uuid id);

    // Start-up
    void createShortcuts();
    void registerShortcuts();
    void installMainMenu();
    void publishDockContent();
    void observeDisplays();

    // What shows
    std::unique_ptr<PresentationController> makePresentation();
    void scrollMainDisplay(int steps);
    MenuContent menuContent();
    BrightnessMenu* makeBrightnessMenu();
    void createSettingsWindow();
    void tellVisibility();

    AppServices services;
    DisplayStore store;
    PresetStore presets;
    GeneralPreferences preferences;
    std::unique_ptr<PresetEditor> editor;
    std::unique_ptr<GlobalShortcuts> shortcuts;
    std::unique_ptr<QMenu> mainMenu; ///< windows carry its actions, for their keys
    std::unique_ptr<QMenuBar> menuBar;
    PanelController panel;
    std::unique_ptr<MenuPublisher> menus;                 ///< while the program shows itself
    std::unique_ptr<PresentationController> presentation; ///< while the program shows itself
    std::optional<Point> dockContextPoint; ///< where the pointer was when the Dock icon's menu opened
    std::unique_ptr<SettingsWindow> settingsWindow;
    LaterCall tellEditorLater;
    Subscription displayObservation;
    Subscription activePresetObservation;
    std::unique_ptr<RemoteRequests> remote; ///< while the program shows itself, where other programs can reach it
    bool isToBeVisible = false;             ///< once it is known whether the status item can be seen
    bool isTerminated = false;
};

} // namespace lumenvale
