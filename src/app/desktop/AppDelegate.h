// SPDX-License-Identifier: MIT
// Owns the long-lived objects of the desktop program and is its shell: start-up and shutdown, status item, Dock
// menu, brightness panel and settings window. Made by `runDesktop`; main thread only. What arrives from
// elsewhere is queued for the main loop, with this object as its context, and is dropped once it is gone.
#pragma once

#include "app/cli/DesktopRequest.h"
#include "app/desktop/LocalEventMonitor.h"
#include "app/desktop/PanelPlacement.h"
#include "app/desktop/SettingsWindow.h"
#include "displays/Diagnostics.h"
#include "displays/DisplayStore.h"
#include "platform/Shell.h"
#include "preferences/BuildInfo.h"
#include "preferences/GeneralPreferences.h"
#include "presets/GlobalShortcuts.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "ui/panel/BrightnessMenu.h"
#include "ui/panel/BrightnessPanel.h"

#include <QMenuBar>
#include <QObject>
#include <memory>
#include <optional>
#include <vector>

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
    BuildInfo build;
};

class AppDelegate final : public QObject {
public:
    /// Creates the three stores, and nothing that shows.
    explicit AppDelegate(const AppServices& services);
    ~AppDelegate() override;

    /// Start-up, once the event loop is about to run.
    void applicationDidFinishLaunching();
    /// Shutdown: nothing shows and nothing is registered any more when it returns. Safe to call again.
    void applicationWillTerminate();
    /// The Dock icon was clicked.
    void applicationShouldHandleReopen();
    /// What another copy of the program was asked to do. A preset waits until the displays are known.
    void perform(const DesktopRequest& request);

    void toggleMenu();
    void dismissMenu();
    void showSettings();

private:
    // Start-up
    PresetEditor& presetEditor(); ///< creates `editor` on first use
    void registerShortcuts();
    void installSettingsKeyMonitor();
    void installMainMenu();
    void observeCounts();
    void tellEditorOfDisplays();
    void applyPresentation(AppPresentation presentation);

    // Status item and Dock
    StatusItemContent statusItemContent();
    void scrollMainDisplay(int steps);
    Menu dockMenu();
    Menu statusMenu();
    void appendPresets(Menu& menu);
    void dockMenuWillOpen();
    void openDockBrightness();
    void menusChanged(); ///< coalesced: the menus are published on the loop's next turn
    void publishMenus();

    // Panel
    void showPanel(const Rect& frame);
    void showMenuAtStatusItem();
    void showMenuNearDock(std::optional<Point> point);
    void positionMenu();
    BrightnessMenu* makeMenu();
    void bringPanelToFront();
    void setPanelFrame(const Rect& frame);
    bool handlePanelEvent(QWindow* window, QEvent* event);
    void clickedOutside();
    double menuHeight() const;
    std::optional<Rect> statusItemPanelFrame() const;

    // Settings
    void createSettingsWindow();
    bool handleSettingsKey(QWindow* window, QEvent* event);

    void performPreset(const std::string& wanted);
    void tellVisibility();
    void callLater(void (AppDelegate::*operation)());

    AppServices services;
    DisplayStore store;
    PresetStore presets;
    GeneralPreferences preferences;
    std::unique_ptr<PresetEditor> editor;
    std::unique_ptr<GlobalShortcuts> shortcuts;
    std::unique_ptr<LocalEventMonitor> settingsKeyMonitor;
    std::unique_ptr<StatusItem> statusItem;
    std::optional<Point> dockAnchor;       ///< where the panel was opened from the Dock; y grows upward
    std::optional<Point> dockContextPoint; ///< where the Dock's menu was opened
    Rect lastStatusItemFrame;              ///< where the item was taken to be when the panel was last opened at it
    std::unique_ptr<BrightnessPanel> menuPanel;
    std::unique_ptr<EventMonitor> outsideClickMonitor;
    std::unique_ptr<LocalEventMonitor> localEventMonitor;
    std::unique_ptr<SettingsWindow> settingsWindow;
    std::unique_ptr<QMenu> mainMenu; ///< windows carry its actions, for their keys
    std::unique_ptr<QMenuBar> menuBar;
    std::vector<Subscription> menuSizeObservation;
    std::vector<Subscription> menuObservation;
    std::optional<Clock::TimePoint> dismissedByClick;
    std::size_t displayCount = 0;
    std::size_t presetCount = 0;
    bool menusAreStale = false;
    bool isTerminated = false;
};

} // namespace lumenvale
