// SPDX-License-Identifier: MIT
// Brings Qt's colours in line with what the user chose for the desktop, where Qt does not do so itself.
#pragma once

#include "platform/Shell.h"
#include "ui/look/Theme.h"

#include <optional>

class QPalette;

namespace lumenvale {

struct AppearanceChoice {
    Appearance appearance = Appearance::system;
    std::optional<QColor> accent;

    bool operator==(const AppearanceChoice& other) const = default;
};

/// What to set, given the palette that Qt has by itself. Pure.
AppearanceChoice chooseAppearance(const AppearanceWish& wish, const QPalette& systemPalette);

} // namespace lumenvale
