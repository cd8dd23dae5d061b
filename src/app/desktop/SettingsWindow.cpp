// SPDX-License-Identifier: MIT
#include "app/desktop/SettingsWindow.h"

#include "base/Identity.h"
#include "platform/KeyTranslation.h"
#include "ui/controls/Accessibility.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <algorithm>
#include <sstream>

namespace lumenvale {

namespace {

constexpr char frameKey[] = "LumenvaleSettings"; // "x y width height" of the content
constexpr QSize contentSize(800, 580);
constexpr QSize minimumContentSize(560, 340);
constexpr int titleBarHeight = 28; ///< about; it lies above the frame

/// A frame saved on a larger screen, so that all of the window can be reached.
QRect movedInto(const QRect& available, QRect frame)
{
    const QRect room = available.adjusted(0, titleBarHeight, 0, 0);
    frame.setSize(frame.size().boundedTo(room.size()).expandedTo(minimumContentSize));
    frame.moveLeft(std::max(std::min(frame.left(), room.right() + 1 - frame.width()), room.left()));
    frame.moveTop(std::max(std::min(frame.top(), room.bottom() + 1 - frame.height()), room.top()));
    return frame;
}

} // namespace

SettingsWindow::SettingsWindow(QWidget* content, PresetEditor& editor, UserDefaults& defaults)
    : QWidget(nullptr, Qt::Window), editor(editor), defaults(defaults),
      settingsKeyMonitor([this](QWindow* window, QEvent* event) { return handleKey(window, event); })
{
    setAccessibleRole(*this, QAccessible::Window);
    setWindowTitle(applicationName);
    setMinimumSize(minimumContentSize);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
    if (restoreFrame())
        return;
    resize(contentSize);
    const QScreen* pointed = QGuiApplication::screenAt(QCursor::pos());
    if (const QScreen* screen = pointed ? pointed : QGuiApplication::primaryScreen()) {
        QRect frame(QPoint(), contentSize.boundedTo(screen->availableSize()));
        frame.moveCenter(screen->availableGeometry().center());
        setGeometry(frame);
    }
}

void SettingsWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        editor.settingsResignedKey();
    if (event->type() == QEvent::WindowStateChange && visibilityChanged)
        visibilityChanged();
}

void SettingsWindow::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    editor.settingsResignedKey();
    editor.settingsClosed();
}

void SettingsWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (visibilityChanged)
        visibilityChanged();
}

void SettingsWindow::moveEvent(QMoveEvent* event)
{
    QWidget::moveEvent(event);
    saveFrame();
}

void SettingsWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    saveFrame();
}

/// While a shortcut is recorded every key is the recording's; Escape otherwise reverts the editing session.
bool SettingsWindow::handleKey(QWindow* window, QEvent* event)
{
    const bool isForPopup =
        QApplication::activePopupWidget() != nullptr; // it may get its keys by way of this window
    if (!windowHandle() || window != windowHandle() || isForPopup)
        return false;
    if (event->type() == QEvent::ShortcutOverride && editor.recordingShortcutID.get()) {
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
    if (editor.handleKeyEvent(key))
        return true;
    // Not where the page shows no preset, nor again and again while the key is held.
    return isEscape && !key.isRepeat && editor.selectedTab.get() == SettingsTab::presets && editor.revert();
}

bool SettingsWindow::restoreFrame()
{
    std::istringstream saved(readDefault<std::string>(defaults, frameKey).value_or(""));
    int x = 0, y = 0, width = 0, height = 0;
    if (!(saved >> x >> y >> width >> height))
        return false;
    const QRect frame(x, y, std::max(width, minimumContentSize.width()),
                      std::max(height, minimumContentSize.height()));
    const QList<QScreen*> screens = QGuiApplication::screens();
    const auto screen = std::find_if(screens.begin(), screens.end(), [&frame](const QScreen* each) {
        return each->availableGeometry().contains(QPoint(frame.center().x(), frame.top()));
    });
    if (screen == screens.end())
        return false;
    setGeometry(movedInto((*screen)->availableGeometry(), frame));
    return true;
}

void SettingsWindow::saveFrame()
{
    if (!isVisible() || isMaximized() || isFullScreen())
        return;
    std::ostringstream text;
    text << geometry().x() << ' ' << geometry().y() << ' ' << geometry().width() << ' ' << geometry().height();
    defaults.set(frameKey, text.str());
}

} // namespace lumenvale
