// SPDX-License-Identifier: MIT
// System-wide shortcuts under Wayland, where only the desktop may watch the keyboard: through the desktop portal
// (org.freedesktop.portal.GlobalShortcuts). Main thread only.
//
// The portal decides later and the user has the last word, so `registerHotKey` accepts every key that can be named
// and the outcome comes through the status observer. A session can be bound once; each change of the set of keys
// therefore makes a new session, after the present turn of the loop, so that a whole set is bound together.
#pragma once

#include "presets/HotKeyService.h"

#include <QDBusConnection>
#include <memory>

namespace lumenvale {

/// `bus` is the session bus, or a test's.
std::unique_ptr<HotKeyService> makePortalHotKeys(const QDBusConnection& bus);

} // namespace lumenvale
