// SPDX-License-Identifier: MIT
// The appearance that the user chose for the desktop, from the desktop portal (org.freedesktop.portal.Settings,
// namespace org.freedesktop.appearance). Where there is no portal it never tells anything. Main thread only.
#pragma once

#include "platform/Shell.h"

#include <QDBusConnection>
#include <memory>

namespace lumenvale {

/// `bus` is the session bus, or a test's.
std::unique_ptr<AppearanceSource> makePortalAppearance(const QDBusConnection& bus);

} // namespace lumenvale
