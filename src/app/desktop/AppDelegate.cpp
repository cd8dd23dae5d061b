// SPDX-License-Identifier: MIT
// The delegate's start-up, shutdown and presentation.
#include "app/desktop/AppDelegate.h"

#include "platform/KeyTranslation.h"

#include <QApplication>
#include <QKeyEvent>
#include <utility>

namespace lumenvale {

namespace {

constexpr char hasOpenedSettingsKey[] = "hasOpenedSettings";

} // namespace

AppDelegate::AppDelegate(const AppServices& given)
    : services(given),
      store(services.hardware, services.defaults, services.screens, services.events, services.clock),
      presets(services.defaults), preferences(services.defaults, services.startup)
{
}

AppDelegate::~AppDelegate() { applicationWillTerminate(); }

void AppDelegate::callLater(void (AppDelegate::*operation)())
{
    QMetaObject::invokeMethod(
        this, [this, operation] { (this->*operation)(); }, Qt::QueuedConnection);
}

PresetEditor& AppDelegate::presetEditor()
{
    if (!editor) {
        editor = std::make_unique<PresetEditor>(store, presets, services.defaults);
        editor->shortcutRecordingChanged = [this] { registerShortcuts(); };
        menuObservation.push_back(editor->activePresetID.subscribe([this](const auto&) { menusChanged(); }));
    }
    return *editor;
}

void AppDelegate::applicationDidFinishLaunching()
{
    if (services.hotKeys) {
        shortcuts = std::make_unique<GlobalShortcuts>(
            *services.hotKeys, [this](const Uuid& preset) { presetEditor().activate(preset); });
        shortcuts->statusChanged = [this](const Uuid& preset, const std::string& message) {
            presets.shortcutErrors.modify([&](auto& errors) {
                errors.erase(preset);
                if (!message.empty())
                    errors[preset] = message;
            });
        };
    }
    presets.shortcutsChanged = [this] { registerShortcuts(); };
    presetEditor().shortcutRecordingChanged = [this] { registerShortcuts(); };
    registerShortcuts();
    installSettingsKeyMonitor();
    preferences.presentationChanged = [this](AppPresentation presentation) { applyPresentation(presentation); };
    services.shell.dock->setContent({[this] { applicationShouldHandleReopen(); }, [this] { dockMenuWillOpen(); },
                                     [this] { return dockMenu(); }});
    applyPresentation(preferences.presentation.get());
    installMainMenu();
    observeCounts();
    store.brightnessObserved = [this](const std::vector<DisplayInfo>& changed) {
        presetEditor().displaysChanged(changed);
    };
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
    dismissMenu();
    if (shortcuts)
        shortcuts->stop();
    settingsKeyMonitor.reset();
    statusItem.reset();
    services.shell.dock->setContent({});
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the panel looks at the stores
}

/// While a shortcut is recorded the keys belong to the recording: none of ours may swallow them.
void AppDelegate::registerShortcuts()
{
    if (!shortcuts)
        return;
    const bool isRecording = editor && editor->recordingShortcutID.get().has_value();
    const auto errors =
        shortcuts->registerAll(isRecording ? std::vector<BrightnessPreset>() : presets.presets.get());
    if (!isRecording)
        presets.shortcutErrors.set(errors);
}

void AppDelegate::installMainMenu()
{
    mainMenu = std::make_unique<QMenu>("Lumenvale");
    QAction* const settings = mainMenu->addAction("Settings…", this, [this] { showSettings(); });
    settings->setMenuRole(QAction::PreferencesRole);
    settings->setShortcut(QKeySequence("Ctrl+,")); // the toolkit's "Ctrl" is the Command key on a Mac
    mainMenu->addSeparator();
    QAction* const quit = mainMenu->addAction("Quit Lumenvale", qApp, &QCoreApplication::quit);
    quit->setMenuRole(QAction::QuitRole);
    quit->setShortcut(QKeySequence("Ctrl+Q"));
    if (services.shell.hasMenuBar) { // elsewhere a bar would show nowhere, and takes long to make
        menuBar = std::make_unique<QMenuBar>();
        menuBar->addMenu(mainMenu.get());
    }
}

void AppDelegate::observeCounts()
{
    displayCount = store.displays.get().size();
    presetCount = presets.presets.get().size();
    menuSizeObservation.push_back(store.displays.subscribe([this](const std::vector<DisplayInfo>& displays) {
        if (std::exchange(displayCount, displays.size()) != displays.size())
            callLater(&AppDelegate::positionMenu);
        callLater(&AppDelegate::tellEditorOfDisplays); // who looks for displays that came and went in the list
    }));
    menuSizeObservation.push_back(presets.presets.subscribe([this](const std::vector<BrightnessPreset>& list) {
        if (std::exchange(presetCount, list.size()) != list.size())
            callLater(&AppDelegate::positionMenu);
        menusChanged();
    }));
}

void AppDelegate::tellEditorOfDisplays() { presetEditor().displaysChanged(store.displays.get()); }

void AppDelegate::applyPresentation(AppPresentation presentation)
{
    if (presentation == AppPresentation::dock) {
        if (statusItem) {
            dismissMenu();
            statusItem.reset();
        }
    } else if (!statusItem) {
        statusItem = services.shell.statusBar->createItem(statusItemContent());
    }
    services.shell.dock->setActivationPolicy(presentation == AppPresentation::menuBar ? ActivationPolicy::accessory
                                                                                      : ActivationPolicy::regular);
    if (settingsWindow && settingsWindow->isVisible()) {
        settingsWindow->raise(); // a change of the policy can hide it
        settingsWindow->activateWindow();
    }
}

// Requests from outside

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
    case DesktopRequest::Action::applyPreset:
        performPreset(request.preset);
        return;
    }
}

void AppDelegate::performPreset(const std::string& wanted)
{
    const auto id = Uuid::parse(wanted);
    for (const BrightnessPreset& each : presets.presets.get()) {
        if (each.id == id || displayName(each) == wanted) {
            dismissMenu();
            presetEditor().activate(each.id);
            return;
        }
    }
}

} // namespace lumenvale
