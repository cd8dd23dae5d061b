// SPDX-License-Identifier: MIT
#include "app/desktop/AppDelegate.h"

#include "base/Identity.h"
#include "ui/settings/SettingsTabController.h"

#include <QApplication>
#include <QCursor>
#include <QIcon>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

constexpr char hasOpenedSettingsKey[] = "hasOpenedSettings";

/// What a notch of the wheel over the status item changes: coarse enough to cross the scale in twenty.
constexpr double brightnessPerNotch = 0.05;

} // namespace

AppDelegate::AppDelegate(const AppServices& services)
    : services(services),
      store(services.hardware, services.defaults, services.screens, services.events, services.clock),
      presets(services.defaults), preferences(services.defaults, services.startup),
      panel(store, presets, services.clock, services.shell, [this] { return makeBrightnessMenu(); }),
      tellEditorLater([this] { presetEditor().displaysChanged(store.displays.get()); })
{
    panel.visibilityChanged = [this] { tellVisibility(); };
}

AppDelegate::~AppDelegate() { applicationWillTerminate(); }

PresetEditor& AppDelegate::presetEditor()
{
    if (!editor) {
        editor = std::make_unique<PresetEditor>(store, presets, services.defaults);
        editor->shortcutRecordingChanged = [this] { registerShortcuts(); };
        activePresetObservation = editor->activePresetID.subscribe([this](const auto&) {
            if (menus)
                menus->menusChanged();
        });
    }
    return *editor;
}

void AppDelegate::activatePreset(Uuid id)
{
    panel.dismissMenu();
    presetEditor().activate(id);
}

void AppDelegate::applicationDidFinishLaunching()
{
    menus = std::make_unique<MenuPublisher>(presets, *services.shell.dock, menuContent());
    createShortcuts();
    presets.shortcutsChanged = [this] { registerShortcuts(); };
    registerShortcuts();
    publishDockContent();
    presentation = makePresentation();
    presentation->start();
    installMainMenu();
    observeDisplays();
    if (services.shell.remote)
        remote = std::make_unique<RemoteRequests>(*services.shell.remote, store, presets,
                                                  [this](const Uuid& preset) { presetEditor().activate(preset); });
    store.startMonitoring();
    store.requestRefresh();
    if (!readDefault<bool>(services.defaults, hasOpenedSettingsKey).value_or(false)) {
        showSettings();
        services.defaults.set(hasOpenedSettingsKey, true);
    }
}

void AppDelegate::applicationWillTerminate()
{
    if (std::exchange(isTerminated, true))
        return;
    store.stopMonitoring();
    panel.dismissMenu();
    if (shortcuts)
        shortcuts->stop();
    settingsWindow.reset();
    remote.reset();
    presentation.reset();
    services.shell.dock->setContent({});
    menus.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the panel looks at the stores
}

void AppDelegate::createShortcuts()
{
    if (!services.hotKeys)
        return;
    shortcuts = std::make_unique<GlobalShortcuts>(*services.hotKeys,
                                                  [this](const Uuid& preset) { presetEditor().activate(preset); });
    shortcuts->statusChanged = [this](const Uuid& preset, const std::string& message) {
        presets.shortcutErrors.modify([&](auto& errors) {
            errors.erase(preset);
            if (!message.empty())
                errors[preset] = message;
        });
    };
}

/// While a shortcut is recorded the keys belong to the recording: none of ours may swallow them.
void AppDelegate::registerShortcuts()
{
    if (!shortcuts)
        return;
    const bool isRecording = presetEditor().recordingShortcutID->has_value();
    const auto errors =
        shortcuts->registerAll(isRecording ? std::vector<BrightnessPreset>() : presets.presets.get());
    if (!isRecording)
        presets.shortcutErrors.set(errors);
}

void AppDelegate::installMainMenu()
{
    mainMenu = std::make_unique<QMenu>("Lumenvale");
    QAction* const settings = mainMenu->addAction("Settings…", mainMenu.get(), [this] { showSettings(); });
    settings->setMenuRole(QAction::PreferencesRole);
    settings->setShortcut(QKeySequence("Ctrl+,")); // Qt's "Ctrl" is the Command key on a Mac
    mainMenu->addSeparator();
    QAction* const quit = mainMenu->addAction("Quit Lumenvale", qApp, &QCoreApplication::quit);
    quit->setMenuRole(QAction::QuitRole);
    quit->setShortcut(QKeySequence("Ctrl+Q"));
    if (services.shell.hasMenuBar) { // elsewhere a bar would show nowhere, and takes long to make
        menuBar = std::make_unique<QMenuBar>();
        menuBar->addMenu(mainMenu.get());
    }
}

void AppDelegate::publishDockContent()
{
    const auto menuWillOpen = [this] {
        panel.dismissMenu();
        dockContextPoint = pointerLocation();
    };
    services.shell.dock->setContent(
        {[this] { applicationShouldHandleReopen(); }, menuWillOpen, [this] { return menus->dockMenu(); }});
}

/// The editor hears of changed levels at once, and of displays that come and go when they stand in the list.
void AppDelegate::observeDisplays()
{
    store.brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
        presetEditor().displaysChanged(changed);
    };
    store.obstacle = [this](const DisplayInfo& display) { return services.diagnostics.obstacle(display); };
    displayObservation = store.displays.subscribe([this](const auto&) { tellEditorLater.request(); });
}

void AppDelegate::showUnlessVisible()
{
    const std::optional<bool> showsIcon = presentation->showsIcon();
    isToBeVisible = !showsIcon;
    if (!showsIcon.value_or(true) && !panel.isOpen() && !(settingsWindow && settingsWindow->isVisible()))
        panel.showMenuNearDock(std::nullopt);
}

std::unique_ptr<PresentationController> AppDelegate::makePresentation()
{
    StatusItemContent content;
    content.activated = [this] { panel.toggleMenu(); };
    content.scrolled = [this](int steps) { scrollMainDisplay(steps); };
    content.menu = [this] { return menus->statusMenu(); };
    auto made = std::make_unique<PresentationController>(services.shell, preferences, std::move(content));
    made->statusItemChanged = [this](StatusItem* item) {
        if (!item)
            panel.dismissMenu();
        panel.setStatusItem(item);
        menus->setStatusItem(item);
    };
    made->applied = [this] {
        if (settingsWindow && settingsWindow->isVisible()) {
            settingsWindow->raise(); // a change of the policy can hide it
            settingsWindow->activateWindow();
        }
    };
    made->statusAreaChanged = [this] {
        if (isToBeVisible)
            showUnlessVisible();
    };
    return made;
}

void AppDelegate::scrollMainDisplay(int steps)
{
    const std::vector<DisplayInfo>& displays = store.displays.get();
    auto target = std::find_if(displays.begin(), displays.end(),
                               [](const DisplayInfo& each) { return each.isMain && each.brightness; });
    if (target == displays.end())
        target = std::find_if(displays.begin(), displays.end(), [](const auto& each) { return each.brightness; });
    if (target == displays.end())
        return;
    const std::string id = target->id; // the write changes the list
    store.setBrightness(id, adjusted(*target, steps * brightnessPerNotch));
}

MenuContent AppDelegate::menuContent()
{
    MenuContent content;
    content.showPanelAtStatusItem = [this] { panel.showPanelAtStatusItem(); };
    content.openDockBrightness = [this] { panel.showMenuNearDock(dockContextPoint); };
    content.showSettings = [this] { showSettings(); };
    content.applyPreset = [this](const Uuid& id) { activatePreset(id); };
    content.activePreset = [this] { return presetEditor().activePresetID.get(); };
    return content;
}

BrightnessMenu* AppDelegate::makeBrightnessMenu()
{
    auto* const menu = new BrightnessMenu(
        store, presets, presetEditor(), services.clock, [this] { showSettings(); },
        [this](const BrightnessPreset& preset) { activatePreset(preset.id); });
    menu->addActions(mainMenu->actions());
    return menu;
}

void AppDelegate::showSettings()
{
    const auto number = services.screens.displayAt(pointerLocation());
    panel.dismissMenu();
    if (!settingsWindow)
        createSettingsWindow();
    presetEditor().show(number ? std::optional(stableIdentifier(std::nullopt, *number)) : std::nullopt);
    settingsWindow->setWindowState(settingsWindow->windowState() & ~Qt::WindowMinimized);
    settingsWindow->show();
    settingsWindow->raise();
    settingsWindow->activateWindow();
    services.shell.panels->focus(settingsWindow->winId());
    tellVisibility();
}

void AppDelegate::createSettingsWindow()
{
    auto* pages = new SettingsTabController({store, presets, presetEditor(), preferences, services.diagnostics,
                                             services.clock, services.words, services.build});
    settingsWindow = std::make_unique<SettingsWindow>(pages, presetEditor(), services.defaults);
    const QIcon ownIcon(":/app.lumenvale.Lumenvale.svg");
    settingsWindow->setWindowIcon(QIcon::fromTheme(applicationIdentifier, ownIcon)); // the search takes time
    settingsWindow->addActions(mainMenu->actions());
    settingsWindow->visibilityChanged = [this] { tellVisibility(); };
}

/// The store reads monitors seldom while no window shows their brightness.
void AppDelegate::tellVisibility()
{
    const bool showsSettings = settingsWindow && settingsWindow->isVisible() && !settingsWindow->isMinimized();
    store.setWindowVisible(panel.isOpen() || showsSettings);
}

// Requests from outside

void AppDelegate::applicationShouldHandleReopen() { panel.showMenuNearDock(std::nullopt); }

void AppDelegate::perform(const DesktopRequest& request)
{
    services.shell.panels->useActivationToken(request.activationToken);
    switch (request.action) {
    case DesktopRequest::Action::showPanel:
        applicationShouldHandleReopen();
        return;
    case DesktopRequest::Action::openSettings:
        showSettings();
        return;
    case DesktopRequest::Action::applyPreset: {
        const auto id = Uuid::parse(request.preset);
        if (id && presets.preset(*id))
            activatePreset(*id);
        return;
    }
    case DesktopRequest::Action::startQuietly:
        return;
    }
}

} // namespace lumenvale
