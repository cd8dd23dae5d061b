// SPDX-License-Identifier: MIT
// The delegate's settings window.
#include "app/desktop/AppDelegate.h"
#include "base/Identity.h"
#include "platform/KeyTranslation.h"
#include "ui/settings/SettingsTabController.h"

#include <QCursor>
#include <QIcon>
#include <QKeyEvent>
#include <QWindow>

namespace lumenvale {

void AppDelegate::showSettings()
{
    const QPoint pointer = QCursor::pos();
    const auto number = services.screens.displayAt({double(pointer.x()), double(pointer.y())});
    dismissMenu();
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
    auto* pages = new SettingsTabController(
        {store, presets, presetEditor(), preferences, services.diagnostics, services.clock, services.build});
    settingsWindow = std::make_unique<SettingsWindow>(pages, services.defaults);
    settingsWindow->setWindowIcon(QIcon::fromTheme(applicationIdentifier)); // searching the themes takes time
    settingsWindow->addActions(mainMenu->actions());
    settingsWindow->resignedKey = [this] { presetEditor().settingsResignedKey(); };
    settingsWindow->closed = [this] {
        presetEditor().settingsResignedKey();
        presetEditor().settingsClosed();
        tellVisibility();
    };
}

void AppDelegate::installSettingsKeyMonitor()
{
    settingsKeyMonitor = std::make_unique<LocalEventMonitor>(
        [this](QWindow* window, QEvent* event) { return handleSettingsKey(window, event); });
}

bool AppDelegate::handleSettingsKey(QWindow* window, QEvent* event)
{
    if (!settingsWindow || window != settingsWindow->windowHandle())
        return false;
    if (event->type() == QEvent::ShortcutOverride && editor && editor->recordingShortcutID.get()) {
        event->accept(); // the key is recorded, whatever else it means in the window
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& press = static_cast<const QKeyEvent&>(*event);
    const bool isEscape = press.key() == Qt::Key_Escape; // on whichever key the layout has it
    KeyEvent key = translateKeyEvent(press);
    if (isEscape)
        key.keyCode = escapeKeyCode;
    if (presetEditor().handleKeyEvent(key))
        return true;
    return isEscape && editor && editor->revert();
}

} // namespace lumenvale
