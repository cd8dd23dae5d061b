// SPDX-License-Identifier: MIT
// A shortcut as the desktop portal knows it (org.freedesktop.portal.GlobalShortcuts).
#pragma once

#include "presets/PresetShortcut.h"

#include <QVariant>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

struct PortalShortcut {
    std::string name;        ///< what the desktop remembers it by
    std::string description; ///< what the desktop shows the user
    std::string trigger;     ///< the key we would like, see portalTrigger
};

/// A shortcut in the portal's notation ("CTRL+ALT+F5"; the freedesktop.org shortcuts specification). Empty when
/// the notation has no name for the key. The key is named after what it types on an ANSI keyboard: the notation
/// has no other way to name a position.
std::string portalTrigger(const PresetShortcut& shortcut);

/// As the portal's a(sa{sv}).
QVariant writePortalShortcuts(const std::vector<PortalShortcut>& shortcuts);

/// The names of those shortcuts in the portal's a(sa{sv}) that have a key. Empty for any other value.
std::set<std::string> readBoundShortcuts(const QVariant& value);

} // namespace lumenvale
