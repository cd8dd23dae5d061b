// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacDock.h"

#include <QAction>
#include <QGuiApplication>
#include <QWindow>
#include <utility>

namespace lumenvale {

namespace {

/// As AppKit's own handler of clicks on the icon does, in whose place ours is.
void showMinimised()
{
    for (QWindow* const window : QGuiApplication::topLevelWindows()) {
        if (window->windowStates().testFlag(Qt::WindowMinimized))
            window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    }
}

} // namespace

MacDock::MacDock()
{
    // Emitted when the Dock asks the program for the menu, which it does each time the menu opens.
    QObject::connect(&menu, &QMenu::aboutToShow, &menu, [this] { menuWillOpen(); });
    menu.setAsDockMenu();
}

MacDock::~MacDock() = default;

void MacDock::setContent(DockContent next)
{
    content = std::move(next);
    reopenHandler.reset();
    if (content.reopen)
        reopenHandler.emplace([reopen = content.reopen] {
            showMinimised();
            reopen();
        });
}

void MacDock::cancelTracking()
{
    if (!isOpening)
        cancelMenuTracking(menu.toNSMenu());
}

void MacDock::menuWillOpen()
{
    isOpening = true;
    if (content.menuWillOpen)
        content.menuWillOpen();
    menu.clear();
    for (const MenuEntry& entry : content.menu ? content.menu() : Menu()) {
        if (entry.id.empty()) {
            menu.addSeparator();
            continue;
        }
        QAction* const action = menu.addAction(QString::fromStdString(entry.title));
        action->setMenuRole(QAction::NoRole); // Qt would move "Settings…" to the application's menu
        action->setCheckable(entry.isCheckable);
        action->setChecked(entry.isChecked);
        QObject::connect(action, &QAction::triggered, &menu, entry.action);
    }
    isOpening = false;
}

} // namespace lumenvale
