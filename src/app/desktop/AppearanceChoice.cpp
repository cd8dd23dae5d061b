// SPDX-License-Identifier: MIT
#include "app/desktop/AppearanceChoice.h"

#include <QPalette>

namespace lumenvale {

AppearanceChoice chooseAppearance(const AppearanceWish& wish, const QPalette& systemPalette)
{
    const Theme system = Theme::of(systemPalette);
    const bool isDark = wish.isDark.value_or(system.isDark);
    const bool hasOwnAccent = system.accent != Theme::of(makePalette(system.isDark)).accent;
    const bool lacksAccent = wish.accent && !hasOwnAccent;
    if (isDark == system.isDark && !lacksAccent)
        return {}; // Qt follows the desktop by itself
    AppearanceChoice choice;
    choice.appearance = isDark ? Appearance::dark : Appearance::light;
    if (wish.accent)
        choice.accent = QColor(QRgb(*wish.accent | 0xFF000000u));
    return choice;
}

} // namespace lumenvale
