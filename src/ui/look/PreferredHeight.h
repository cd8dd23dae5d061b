// SPDX-License-Identifier: MIT
// The height of the panel's content, term by term the layout of BrightnessMenu.
#pragma once

namespace lumenvale {

constexpr int panelWidth = 340;
constexpr int panelPadding = 12;
constexpr int rowHeight = 50;
constexpr int rowSpacing = 8;
constexpr int emptyMessageHeight = 40;
constexpr int dividerHeight = 1;
constexpr int presetHeaderHeight = 22;
constexpr int presetRowHeight = 26;
constexpr int presetPadding = 6;
constexpr int footerHeight = 38;

/// In points, for `displays` displays and `presets` presets.
constexpr double preferredHeight(int displays, int presets)
{
    const int rows = displays < 1 ? emptyMessageHeight : rowHeight * displays + rowSpacing * (displays - 1);
    const int list =
        presets < 1 ? 0 : presetRowHeight * presets + dividerHeight + presetHeaderHeight + 2 * presetPadding;
    return rows + 2 * panelPadding + list + dividerHeight + footerHeight;
}

} // namespace lumenvale
