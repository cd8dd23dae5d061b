// SPDX-License-Identifier: MIT
#include "app/desktop/MenuPublisher.h"

#include <QCoreApplication>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

bool isSameRow(const BrightnessPreset& one, const BrightnessPreset& other)
{
    return one.id == other.id && displayName(one) == displayName(other);
}

} // namespace

MenuPublisher::MenuPublisher(PresetStore& presets, Dock& dock, MenuContent content)
    : presets(presets), dock(dock), content(std::move(content)), publishLater([this] { publish(); }),
      presetObservation(presets.presets.subscribe([this](const std::vector<BrightnessPreset>& next) {
          if (!std::ranges::equal(this->presets.presets.get(), next, isSameRow)) // levels show in no menu
              menusChanged();
      }))
{
}

Menu MenuPublisher::statusMenu() const
{
    Menu menu;
    menu.push_back({"brightness", "Brightness…", false, false, content.showPanelAtStatusItem, {}});
    appendPresets(menu);
    menu.emplace_back();
    menu.push_back({"settings", "Settings…", false, false, content.showSettings, {}});
    menu.push_back({"quit", "Quit Lumenvale", false, false, [] { QCoreApplication::quit(); }, {}});
    return menu;
}

Menu MenuPublisher::dockMenu() const
{
    Menu menu;
    menu.push_back({"brightness", "Brightness…", false, false, content.openDockBrightness, {"--show-panel"}});
    appendPresets(menu);
    menu.emplace_back();
    menu.push_back({"settings", "Settings…", false, false, content.showSettings, {"--open-settings"}});
    return menu;
}

void MenuPublisher::appendPresets(Menu& menu) const
{
    const std::vector<BrightnessPreset>& list = presets.presets.get();
    if (!list.empty())
        menu.emplace_back();
    for (const BrightnessPreset& each : list) {
        const DockPresetAction preset = {[apply = content.applyPreset, id = each.id] { apply(id); }};
        const bool isActive = content.activePreset() == each.id;
        const std::string id = each.id.toString();
        menu.push_back({"preset-" + id,
                        displayName(each),
                        true,
                        isActive,
                        [preset] { preset.invoke(); },
                        {"--apply-preset", id}});
    }
}

void MenuPublisher::publish()
{
    if (statusItem)
        statusItem->menuChanged();
    dock.menuChanged();
}

} // namespace lumenvale
