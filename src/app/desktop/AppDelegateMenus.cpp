// SPDX-License-Identifier: MIT
// The delegate's status item and Dock menu.
#include "app/desktop/AppDelegate.h"
#include "app/desktop/Screens.h"
#include "ui/look/Symbols.h"

#include <QCoreApplication>
#include <algorithm>

namespace lumenvale {

namespace {

/// What a notch of the wheel over the status item changes: coarse enough to cross the scale in twenty.
constexpr double brightnessPerNotch = 0.05;

Bitmap statusBitmap(double scale)
{
    const QImage image = statusImage(Qt::black, scale).convertToFormat(QImage::Format_ARGB32);
    Bitmap bitmap = {image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        bitmap.pixels.insert(bitmap.pixels.end(), row, row + image.width());
    }
    return bitmap;
}

} // namespace

StatusItemContent AppDelegate::statusItemContent()
{
    StatusItemContent content;
    content.title = "Lumenvale";
    content.toolTip = "Lumenvale — control each display";
    content.image = statusBitmap;
    content.activated = [this] { toggleMenu(); };
    content.scrolled = [this](int steps) { scrollMainDisplay(steps); };
    content.menu = [this] { return statusMenu(); };
    return content;
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

Menu AppDelegate::dockMenu()
{
    Menu menu;
    menu.push_back(
        {"brightness", "Brightness…", false, false, [this] { openDockBrightness(); }, {"--show-panel"}});
    appendPresets(menu);
    menu.emplace_back();
    menu.push_back({"settings", "Settings…", false, false, [this] { showSettings(); }, {"--open-settings"}});
    return menu;
}

Menu AppDelegate::statusMenu()
{
    Menu menu;
    menu.push_back({"brightness", "Brightness…", false, false, [this] { showMenuAtStatusItem(); }, {}});
    appendPresets(menu);
    menu.emplace_back();
    menu.push_back({"settings", "Settings…", false, false, [this] { showSettings(); }, {}});
    menu.push_back({"quit", "Quit Lumenvale", false, false, [] { QCoreApplication::quit(); }, {}});
    return menu;
}

void AppDelegate::appendPresets(Menu& menu)
{
    const std::vector<BrightnessPreset>& list = presets.presets.get();
    if (!list.empty())
        menu.emplace_back();
    for (const BrightnessPreset& each : list) {
        const auto apply = [this, id = each.id] {
            dismissMenu();
            presetEditor().activate(id);
        };
        const bool isActive = presetEditor().activePresetID.get() == each.id;
        const std::string id = each.id.toString();
        menu.push_back({"preset-" + id, displayName(each), true, isActive, apply, {"--apply-preset", id}});
    }
}

void AppDelegate::dockMenuWillOpen()
{
    dismissMenu();
    dockContextPoint = pointerLocation();
}

void AppDelegate::openDockBrightness() { showMenuNearDock(dockContextPoint); }

void AppDelegate::menusChanged()
{
    // The lists announce a change before they hold it, and a menu must not change while one of its rows acts.
    if (!std::exchange(menusAreStale, true))
        callLater(&AppDelegate::publishMenus);
}

void AppDelegate::publishMenus()
{
    menusAreStale = false;
    if (isTerminated)
        return;
    if (statusItem)
        statusItem->menuChanged();
    services.shell.dock->menuChanged();
}

} // namespace lumenvale
